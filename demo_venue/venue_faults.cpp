#include "demo_venue/venue_faults.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <sstream>

#include "demo_venue/venue_session.h"

namespace {

void Disconnect(VenueSession& session, std::uint32_t /*number*/) {
  const std::string trade = session.NextTrade();
  session.Put(std::string_view(trade).substr(0, trade.size() / 2));
  session.Close();
}

void Garble(VenueSession& session, std::uint32_t /*number*/) {
  std::string trade = session.NextTrade();
  trade[trade.find("\x01"
                   "31=") +
        4] ^= 1;  // another digit
  session.Put(trade);
}

void BadLength(VenueSession& session, std::uint32_t number) {
  const std::string trade = session.NextTrade();
  const std::string length(VenueField(trade, 9));
  std::string damaged = trade;
  session.Put(damaged.replace(damaged.find("\x01"
                                           "9=") +
                                  3,
                              length.size(), std::to_string(std::stoul(length) + number)));
}

void WrongNumber(VenueSession& session, std::uint32_t number) {
  for (std::uint32_t i = 0; i < number; ++i) session.NextTrade();
}

void NumberTooLow(VenueSession& session, std::uint32_t number) {
  const std::uint64_t next = session.NextNumber();
  session.Put(session.StrayTrade(next > number ? next - number : 1, {}));
}

// Not a gap: all the numbers between are never used.
void ResetUp(VenueSession& session, std::uint32_t number) {
  const std::uint64_t next = session.NextNumber() + number;
  session.SendAdmin("4", VenueText().Add(123, "N").Add(36, next), number);
}

void WrongCompId(VenueSession& session, std::uint32_t /*number*/) {
  session.Put(session.StrayTrade(session.TakeNumber(), "SOMEBODY"));
}

void Duplicate(VenueSession& session, std::uint32_t number) {
  const std::uint64_t next = session.NextNumber();
  session.Resend(next > number ? next - number : 1, next - 1);
}

void ResetAll(VenueSession& session, std::uint32_t /*number*/) {
  session.ResetAtLogon();
  session.Close();
}

void Split(VenueSession& session, std::uint32_t number) {
  session.Put(session.NextTrade(), number);
}

void Join(VenueSession& session, std::uint32_t number) {
  session.HoldBack(number);
}

template <ReportForm Form>
void About(VenueSession& session, std::uint32_t /*number*/) {
  session.SendAbout(Form);
}

template <ReportForm Form>
void Odd(VenueSession& session, std::uint32_t /*number*/) {
  session.Put(session.NextTrade(Form));
}

void Endless(VenueSession& session, std::uint32_t number) {
  const std::string trade = session.NextTrade();
  const std::size_t text = trade.find(
                               "\x01"
                               "37=") +
                           4;
  std::string message = trade.substr(0, text);
  const std::string length(VenueField(message, 9));
  message.replace(message.find("\x01"
                               "9=") +
                      3,
                  length.size(), "999999999");
  session.Put(message.append(std::size_t{number} << 20, 'x'));
  session.Close();
}

void Silence(VenueSession& session, std::uint32_t /*number*/) {
  session.BeSilent();
}

void LogoutNow(VenueSession& session, std::uint32_t /*number*/) {
  session.LogoutAndClose("good-bye");
}

constexpr FaultKind kFaults[] = {
    {"disconnect", 0, "the connection ends in the middle of the next trade", Disconnect},
    {"logout", 0, "the venue logs out, and lets the client come again", LogoutNow},
    {"silence", 0, "nothing is sent or answered any more on this connection", Silence},
    {"garble", 0, "the next trade has another price than its checksum says", Garble},
    {"bad-length", 3, "the length of the next trade is that much too high", BadLength},
    {"endless", 4, "the next trade has a field of that many megabytes which does not end; then the connection ends",
     Endless},
    {"wrong-number", 5, "that many trades get numbers and are not sent until they are asked for", WrongNumber},
    {"number-too-low", 3, "a message has a number that was used that many messages before", NumberTooLow},
    {"reset-up", 1000, "a SequenceReset leaves out that many numbers", ResetUp},
    {"reset", 0, "the connection ends; at the next logon all numbers begin at 1 and the day comes again", ResetAll},
    {"wrong-comp-id", 0, "a message comes from SOMEBODY", WrongCompId},
    {"duplicate", 10, "the last that many messages come again with PossDupFlag", Duplicate},
    {"split", 3, "the next trade is written in pieces of that many bytes", Split},
    {"join", 20, "the next messages are written together", Join},
    {"empty-field", 0, "the next trade has an empty text", Odd<ReportForm::EmptyField>},
    {"two-parties", 0, "the next trade names a second firm with an identification of its own",
     Odd<ReportForm::MoreParties>},
    {"correct", 0, "the last trade is corrected: one more, at a price higher by a half", About<ReportForm::Correction>},
    {"bust", 0, "the last trade is busted", About<ReportForm::Bust>},
};

const FaultKind* KindOf(const std::string& name) {
  const auto* found =
      std::find_if(std::begin(kFaults), std::end(kFaults), [&](const FaultKind& kind) { return name == kind.Name; });
  return found == std::end(kFaults) ? nullptr : found;
}

template <typename Number>
bool ReadNumber(std::string_view text, Number& number) {
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number > 0;
}

// What the line should be; null if it was taken.
const char* TakeFault(const std::vector<std::string>& words, std::uint64_t dayCount, VenueFault& fault) {
  if (words.size() < 3 || words.size() > 4 || words[0] != "after") return "a line is \"after N FAULT [NUMBER]\"";
  if (!ReadNumber(words[1], fault.After) || fault.After >= dayCount)
    return "behind \"after\" stands a count of trades, above 0 and below that of the day";
  fault.Kind = KindOf(words[2]);
  if (fault.Kind == nullptr) return "there is no such fault; --help lists them";
  fault.Number = fault.Kind->Number;
  if (words.size() == 3) return nullptr;
  if (fault.Number == 0) return "this fault takes no number";
  return ReadNumber(words[3], fault.Number) ? nullptr : "the fault's number is not a number above 0";
}

}  // namespace

std::vector<VenueFault> ParseFaults(std::string_view script, const std::filesystem::path& name,
                                    std::uint64_t dayCount) {
  std::vector<VenueFault> faults;
  std::istringstream lines{std::string(script)};
  std::uint64_t number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    std::istringstream text(line.substr(0, line.find('#')));
    const std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
    if (words.empty()) continue;
    VenueFault& fault = faults.emplace_back();
    if (const char* wanted = TakeFault(words, dayCount, fault); wanted != nullptr)
      throw TerminalError(ExitCode::File, PathText(name) + ":" + std::to_string(number) + ": " + wanted);
  }
  std::stable_sort(faults.begin(), faults.end(),
                   [](const VenueFault& a, const VenueFault& b) { return a.After < b.After; });
  return faults;
}

std::vector<VenueFault> ReadFaults(const std::filesystem::path& file, std::uint64_t dayCount) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) ThrowFileError(file, "the faults cannot be read", errno);
  return ParseFaults(std::string(std::istreambuf_iterator<char>(stream), {}), file, dayCount);
}

std::string FaultsHelp() {
  std::string text;
  for (const FaultKind& kind : kFaults) {
    const std::string number = kind.Number == 0 ? "" : " [" + std::to_string(kind.Number) + "]";
    std::string name = kind.Name + number;
    name.resize(std::max<std::size_t>(name.size() + 1, 20), ' ');
    text += "  " + name + kind.Help + "\n";
  }
  return text;
}
