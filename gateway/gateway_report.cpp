#include "gateway/gateway_report.h"

#include <ostream>
#include <utility>

#include "platform/locale.h"

namespace {

constexpr const char* kClearLine = "\r\x1B[K";

std::string WithCommas(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t place = text.size(); place > 3; place -= 3) text.insert(place - 3, 1, ',');
  return text;
}

struct CountRow {
  const char* Name;
  std::uint64_t JournalCounts::*Count;
};
constexpr CountRow kCountRows[] = {
    {"records", &JournalCounts::Records}, {"messages", &JournalCounts::Messages},
    {"trades", &JournalCounts::Trades},   {"corrections", &JournalCounts::Corrections},
    {"busts", &JournalCounts::Busts},     {"repeats", &JournalCounts::Repeats},
    {"refused", &JournalCounts::Refused}, {"unknown", &JournalCounts::Unknown},
};

}  // namespace

GatewayReport::GatewayReport(std::ostream& errors, bool isTerminal, const EventLog& events, Time now)
    : Errors(errors),
      IsTerminal(isTerminal),
      Events(events),
      WindowEnd(now + kAlarmWindow),
      NextCounts(now + kCountsEvery) {}

void GatewayReport::OnAlarm(const Alarm& alarm) {
  const std::lock_guard lock(Lock);
  KindCount& kind = Kinds.at(static_cast<std::size_t>(alarm.Kind));
  ++kind.All;
  if (++kind.Recent > kMostTold) return;
  Line(std::string(NameOf(alarm.Kind)) + ": " + alarm.Text);
  Write("alarm", {{"kind", NameOf(alarm.Kind)}, {"text", alarm.Text}});
}

void GatewayReport::OnEarlierAlarms(const std::string& date, const AlarmCounts& counts) {
  const std::lock_guard lock(Lock);
  std::string list;
  EventFields fields{{"date", date}};
  for (const auto& [kind, count] : counts) {
    Kinds.at(static_cast<std::size_t>(kind)).All += count;
    list += (list.empty() ? "" : ", ") + std::string(NameOf(kind)) + " " + WithCommas(count);
    fields.push_back({NameOf(kind), count});
  }
  Line("alarms of the journal of " + date + " from before this start: " + list);
  Write("earlier alarms", fields);
}

void GatewayReport::OnLogState(bool connected, const std::string& text) {
  const std::lock_guard lock(Lock);
  if (connected) Line("day log: " + text);
  Write("log", {{"connected", connected}, {"text", text}});
}

void GatewayReport::OnSession(bool loggedOn, const std::string& text) {
  const std::lock_guard lock(Lock);
  LoggedOn = loggedOn;
  Line("session: " + text);
  Write("session", {{"logged_on", loggedOn}, {"text", text}});
}

void GatewayReport::Tell(const std::string& event, const std::string& text) {
  const std::lock_guard lock(Lock);
  Line(text);
  Write(event, {{"text", text}});
}

void GatewayReport::Record(const std::string& event, const EventFields& fields) {
  const std::lock_guard lock(Lock);
  Write(event, fields);
}

void GatewayReport::Refresh(const PublisherCounts& counts, Time now) {
  const std::lock_guard lock(Lock);
  if (now >= WindowEnd) {
    TellHeldBack();
    WindowEnd = now + kAlarmWindow;
  }
  if (now >= NextCounts) {
    Write("counts", CountFields(counts));
    NextCounts = now + kCountsEvery;
  }
  if (!IsTerminal) return;
  const std::string status = StatusText(counts);
  if (status == Shown) return;
  Errors << kClearLine << status << std::flush;
  Shown = status;
}

void GatewayReport::RecordCounts(const PublisherCounts& counts) {
  const std::lock_guard lock(Lock);
  TellHeldBack();
  Write("counts", CountFields(counts));
}

void GatewayReport::Finish() {
  const std::lock_guard lock(Lock);
  if (!std::exchange(Shown, {}).empty()) Errors << kClearLine << std::flush;
}

// The status line comes again with the next Refresh.
void GatewayReport::Line(const std::string& text) {
  if (!std::exchange(Shown, {}).empty()) Errors << kClearLine;
  Errors << "trade_gateway: " << PlainLine(text) << '\n' << std::flush;
}

void GatewayReport::Write(const std::string& event, const EventFields& fields) {
  int errorNumber = 0;
  const bool failed = !Events.Write(event, fields, errorNumber);
  if (failed && !EventsFailed)
    Line("the file of --log cannot be written: " + SystemErrorText(static_cast<unsigned long>(errorNumber)));
  EventsFailed = failed;
}

void GatewayReport::TellHeldBack() {
  for (std::size_t i = 0; i < kKinds; ++i) {
    const std::uint64_t recent = std::exchange(Kinds[i].Recent, 0);
    if (recent <= kMostTold) continue;
    const char* name = NameOf(static_cast<AlarmKind>(i));
    Line(std::string(name) + ": " + WithCommas(recent - kMostTold) + " more within seconds");
    Write("more alarms", {{"kind", name}, {"count", recent - kMostTold}});
  }
}

std::uint64_t GatewayReport::AllAlarms() const {
  std::uint64_t all = 0;
  for (const KindCount& kind : Kinds) all += kind.All;
  return all;
}

EventFields GatewayReport::CountFields(const PublisherCounts& counts) const {
  EventFields fields{{"date", counts.Date}, {"logged_on", LoggedOn}};
  for (const CountRow& row : kCountRows) fields.push_back({row.Name, counts.Journal.*row.Count});
  if (counts.HasLog) {
    fields.push_back({"in_log", counts.InLog});
    fields.push_back({"behind", counts.Behind});
    fields.push_back({"log_connected", !counts.IsLogLost});
  }
  fields.push_back({"alarms", AllAlarms()});
  return fields;
}

std::string GatewayReport::StatusText(const PublisherCounts& counts) const {
  std::string text = LoggedOn ? "logged on" : "not connected";
  text += " | trades " + WithCommas(counts.Journal.Trades);
  if (counts.HasLog) {
    text += counts.IsLogLost ? " | log lost, it has " : " | in the log ";
    text += WithCommas(counts.InLog) + " | behind " + WithCommas(counts.Behind);
  }
  return text + " | alarms " + WithCommas(AllAlarms());
}
