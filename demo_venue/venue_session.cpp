#include "demo_venue/venue_session.h"

#include <algorithm>
#include <utility>

namespace {

constexpr VenueTime kSecond = 1000000;
constexpr VenueTime kLongestGoodBye = 5 * kSecond;
constexpr std::string_view kAllCame = "DAY COMPLETE";

struct Version {
  const char* BeginString;
  const char* ApplicationVersion;  // 1137 of the logon
};

constexpr Version kVersions[] = {{"FIX.4.2", ""}, {"FIX.4.4", ""}, {"FIXT.1.1", "9"}};

const Version* VersionOf(std::string_view beginString) {
  const auto* found = std::find_if(std::begin(kVersions), std::end(kVersions),
                                   [&](const Version& version) { return beginString == version.BeginString; });
  return found == std::end(kVersions) ? nullptr : found;
}

}  // namespace

VenueSession::VenueSession(VenueSettings settings, const VenueDay& day, const std::vector<VenueFault>& faults)
    : Settings(std::move(settings)), Day(day), Faults(faults) {}

void VenueSession::OnConnected(VenueTime now) {
  Now = LastSent = LastHeard = now;
}

void VenueSession::OnClosed() {
  if (LoggedOn) Notices.push_back("disconnected");
  Frames.Clear();
  Out.clear();
  ResendFrom = HeldBack = 0;
  LoggedOn = Closing = Silent = AskedForRest = AskedAgain = false;
  Finished = SaidGoodBye;
}

// Messages out.

std::string VenueSession::Make(const char* type, Header header, const VenueText& fields) const {
  VenueText text;
  const std::string_view compId = header.CompID.empty() ? Settings.CompID : header.CompID;
  text.Add(35, type).Add(49, compId).Add(56, Settings.ClientID).Add(34, header.Number);
  if (header.FirstSent != 0) text.Add(43, "Y");
  if (header.IsRepeat) text.Add(97, "Y");
  text.Add(52, SendingTimeText(Now));
  if (header.FirstSent != 0) text.Add(122, SendingTimeText(header.FirstSent));
  return text.Append(fields).Message(BeginString);
}

std::string VenueSession::MakeReport(const Event& event, Header header) const {
  const DayTrade trade = Day.At(event.Trade);
  const ReportStyle style{Settings.Capture, BeginString == "FIX.4.2"};
  VenueText fields;
  AddReport(fields, event.Form, style, trade, Day.DeskOf(trade));
  header.IsRepeat = event.IsRepeat;
  return Make(MessageTypeOf(style), header, fields);
}

std::uint64_t VenueSession::TakeNumber(std::uint64_t count) {
  Sent.resize(Sent.size() + count, {kAdmin, Now});
  return Sent.size() - count + 1;
}

void VenueSession::Put(std::string_view bytes, std::size_t piece) {
  LastSent = Now;
  if (Out.empty() || Out.back().Piece != piece) Out.push_back({{}, piece});
  Out.back().Bytes += bytes;
  if (HeldBack > 0) --HeldBack;
}

void VenueSession::SendAdmin(const char* type, const VenueText& fields, std::uint64_t numbers) {
  Put(Make(type, {TakeNumber(numbers)}, fields));
}

void VenueSession::LogoutAndClose(const std::string& text) {
  VenueText fields;
  SendAdmin("5", fields.AddIfFilled(58, text));
  Closing = true;
}

std::string VenueSession::NextTrade(ReportForm form) {
  if (Trades == Day.Count()) return {};
  Events.push_back({static_cast<std::uint32_t>(Trades++), form});
  Next = Events.size();
  Sent.push_back({static_cast<std::uint32_t>(Next - 1), Now});
  return MakeReport(Events.back(), {Sent.size()});
}

std::string VenueSession::StrayTrade(std::uint64_t number, std::string_view compId) const {
  return MakeReport({0, ReportForm::Stray}, {number, 0, false, compId});
}

void VenueSession::SendAbout(ReportForm form) {
  if (Trades == 0) return;
  Events.push_back({static_cast<std::uint32_t>(Trades - 1), form});
  SendEvent(static_cast<std::uint32_t>(Next++));
}

void VenueSession::SendEvent(std::uint32_t place) {
  Sent.push_back({place, Now});
  Put(MakeReport(Events[place], {Sent.size()}));
}

bool VenueSession::HasNext() const {
  if (!LoggedOn || Closing || Silent || SaidGoodBye) return false;
  return IsResending() || IsRepeating() || Trades < Day.Count() || !AskedForRest;
}

bool VenueSession::SendNext(VenueTime now) {
  Now = now;
  if (!HasNext()) return false;
  if (IsResending())
    SendResent();
  else if (IsRepeating())
    SendEvent(static_cast<std::uint32_t>(Next++));
  else if (RunFault())
    return true;
  else if (const std::string trade = NextTrade(); !trade.empty())
    Put(trade);
  else
    AskWhetherAllCame();
  return true;
}

bool VenueSession::RunFault() {
  if (NextFault == Faults.size() || Faults[NextFault].After > Trades || Trades == Day.Count()) return false;
  const VenueFault& fault = Faults[NextFault++];
  Notices.push_back("after " + std::to_string(fault.After) + " trades: " + fault.Kind->Name);
  fault.Kind->Do(*this, fault.Number);
  return true;
}

// The client answers a test request only when it has all that stands before it.
void VenueSession::AskWhetherAllCame() {
  HeldBack = 0;
  AskedForRest = true;
  SendAdmin("1", VenueText().Add(112, kAllCame));
}

void VenueSession::Resend(std::uint64_t from, std::uint64_t to) {
  ResendTo = std::min<std::uint64_t>(to, Sent.size());
  ResendFrom = from <= ResendTo ? from : 0;
}

// One report, or all that is none up to the next report as a gap.
void VenueSession::SendResent() {
  std::uint64_t end = ResendFrom;
  while (end <= ResendTo && Sent[end - 1].Event == kAdmin) ++end;
  const SentMessage& first = Sent[ResendFrom - 1];
  if (end == ResendFrom)
    Put(MakeReport(Events[Sent[end++ - 1].Event], {ResendFrom, first.Time}));
  else
    Put(Make("4", {ResendFrom, first.Time}, VenueText().Add(123, "Y").Add(36, end)));
  ResendFrom = end <= ResendTo ? end : 0;
}

void VenueSession::OnBeat(VenueTime now) {
  Now = now;
  if (!LoggedOn || Silent) return;
  if (SaidGoodBye && now - LastSent > kLongestGoodBye) Closing = true;
  const auto heartbeat = static_cast<VenueTime>(HeartbeatSeconds) * kSecond;
  if (now - LastHeard > 3 * heartbeat) {
    Notices.push_back("the client is silent");
    Closing = true;
  } else if (!SaidGoodBye && now - LastSent >= heartbeat) {
    SendAdmin("0");
  }
}

void VenueSession::End(VenueTime now) {
  Now = now;
  HeldBack = 0;
  SaidGoodBye = true;
  if (LoggedOn && !Silent) SendAdmin("5");
}

// Messages in.

const VenueSession::Handler VenueSession::kHandlers[] = {
    {"A", &VenueSession::OnLogon},  {"0", &VenueSession::OnHeartbeat},     {"1", &VenueSession::OnTestRequest},
    {"3", &VenueSession::OnReject}, {"4", &VenueSession::OnSequenceReset}, {"2", &VenueSession::OnResendRequest},
    {"5", &VenueSession::OnLogout}, {"j", &VenueSession::OnReject},
};

void VenueSession::OnBytes(std::string_view bytes, VenueTime now) {
  Now = LastHeard = now;
  Frames.Append(bytes);
  for (std::string message; !Closing && Frames.Take(message);)
    if (!Silent) OnMessage(message);
  Closing = Closing || Frames.IsTooLong();
}

void VenueSession::OnMessage(const std::string& message) {
  const std::string_view type = VenueField(message, 35);
  if (type == "A" && NextIn == 0) return OnResetAnswer(message);
  if (LoggedOn == (type == "A")) {
    Notices.push_back("refused a message of type " + std::string(type) +
                      (LoggedOn ? ", a second logon" : " before the logon"));
    Closing = true;
    return;
  }
  if (!IsForUs(message)) return LogoutAndClose("the CompIDs are not those of this session");
  if (type != "A" && type != "4" && !TakesNumber(message)) return;
  for (const Handler& handler : kHandlers)
    if (type == handler.Type) return (this->*handler.Take)(message);
}

bool VenueSession::IsForUs(const std::string& message) const {
  return VenueField(message, 49) == Settings.ClientID && VenueField(message, 56) == Settings.CompID;
}

// A request for resends is answered whatever its number is, else two that miss something wait for each other.
bool VenueSession::TakesNumber(const std::string& message) {
  const std::uint64_t number = VenueNumber(message, 34);
  if (NextIn == 0) NextIn = number;
  if (number == NextIn) {
    ++NextIn;
    AskedAgain = false;
    return true;
  }
  if (number > NextIn) {
    AskAgain();
    return VenueField(message, 35) == "2" || VenueField(message, 35) == "5";
  }
  if (VenueField(message, 43) != "Y")
    LogoutAndClose("MsgSeqNum too low, expecting " + std::to_string(NextIn) + " but received " +
                   std::to_string(number));
  return false;
}

void VenueSession::AskAgain() {
  if (std::exchange(AskedAgain, true)) return;
  SendAdmin("2", VenueText().Add(7, NextIn).Add(16, 0));
}

void VenueSession::ResetNumbers() {
  Sent.clear();
  for (Event& event : Events) event.IsRepeat = true;
  Next = 0;
  NextIn = 1;
}

// A venue that was started anew cannot go on with the numbers of a client: both begin at 1 again.
void VenueSession::OnLogon(const std::string& message) {
  const Version* version = VersionOf(VenueField(message, 8));
  const std::uint64_t number = VenueNumber(message, 34);
  const bool asked = VenueField(message, 141) == "Y";
  const bool reset = asked || std::exchange(ResetDue, false) || (Sent.empty() && NextIn == 1 && number > 1);
  if (version == nullptr) {
    Notices.push_back("refused a logon of " + std::string(VenueField(message, 8)));
    Closing = true;
    return;
  }
  BeginString = version->BeginString;
  if (reset) ResetNumbers();
  if (!reset && number < NextIn)
    return LogoutAndClose("MsgSeqNum too low, expecting " + std::to_string(NextIn) + " but received " +
                          std::to_string(number));
  LoggedOn = true;
  HeartbeatSeconds = std::clamp<std::uint64_t>(VenueNumber(message, 108), 1, 3600);
  VenueText fields;
  fields.Add(98, 0).Add(108, HeartbeatSeconds);
  if (reset) fields.Add(141, "Y");
  fields.AddIfFilled(1137, version->ApplicationVersion);
  SendAdmin("A", fields);
  Notices.push_back("logged on with " + BeginString + (reset ? ", all numbers begin at 1" : ""));
  if (!reset && number > NextIn) return AskAgain();
  NextIn = reset && !asked ? 0 : number + 1;
}

// An initiator may answer a reset that it has not asked for by a logon of its own.
void VenueSession::OnResetAnswer(const std::string& message) {
  NextIn = VenueNumber(message, 34) + 1;
}

void VenueSession::OnHeartbeat(const std::string& message) {
  if (VenueField(message, 112) == kAllCame && !Settings.Stay && !SaidGoodBye) End(Now);
}

void VenueSession::OnTestRequest(const std::string& message) {
  SendAdmin("0", VenueText().Add(112, VenueField(message, 112)));
}

// The question whether all came is not sent again as it is, so it is asked once more.
void VenueSession::OnResendRequest(const std::string& message) {
  AskedForRest = false;
  const std::uint64_t to = VenueNumber(message, 16);
  Resend(std::max<std::uint64_t>(VenueNumber(message, 7), 1), to == 0 ? Sent.size() : to);
}

void VenueSession::OnReject(const std::string& message) {
  Notices.push_back("the client refused message " + std::string(VenueField(message, 45)) + ": " +
                    std::string(VenueField(message, 58)));
}

void VenueSession::OnSequenceReset(const std::string& message) {
  const std::uint64_t number = VenueNumber(message, 36);
  const bool fillsGap = VenueField(message, 123) == "Y";
  if (fillsGap && NextIn != 0 && VenueNumber(message, 34) > NextIn) return AskAgain();
  if (number > NextIn) NextIn = number;
  AskedAgain = false;
}

void VenueSession::OnLogout(const std::string& message) {
  Notices.push_back("the client logs out " + std::string(VenueField(message, 58)));
  if (!SaidGoodBye) SendAdmin("5");
  Closing = true;
}
