// VenueSession: the venue's side of a FIX session, from bytes to bytes: numbers, logon, resends, reports and faults.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "demo_venue/venue_day.h"
#include "demo_venue/venue_faults.h"
#include "demo_venue/venue_text.h"

struct VenueSettings {
  std::string CompID = "VENUE";
  std::string ClientID = "DESK";  // the CompID that an initiator must have
  bool Capture = false;           // TradeCaptureReport instead of ExecutionReport
  bool Stay = false;              // stays logged on behind the last trade
};

// Bytes to be written; a piece above 0 is the most that one write may take.
struct VenueOutput {
  std::string Bytes;
  std::size_t Piece = 0;
};

// Keeps its numbers and what it has sent over connections, 24 bytes for a message, and makes it again when it is asked
// for. A client that resets the numbers gets the whole day again, with 97=Y for what had been sent before.
class VenueSession {
 public:
  // Faults are in the order of their trades; day and faults must outlive it.
  VenueSession(VenueSettings settings, const VenueDay& day, const std::vector<VenueFault>& faults);

  void OnConnected(VenueTime now);
  void OnBytes(std::string_view bytes, VenueTime now);
  // From time to time: heartbeats, and the end of a client that is silent.
  void OnBeat(VenueTime now);
  void OnClosed();
  // Adds the next message to the output: one that was asked for again, else the next report. False if there is none.
  bool SendNext(VenueTime now);
  // SendNext would add something.
  bool HasNext() const;
  // Says good-bye.
  void End(VenueTime now);

  bool IsLoggedOn() const { return LoggedOn; }
  bool IsResending() const { return ResendFrom != 0; }
  // The connection is to be closed behind the output.
  bool WantsClose() const { return Closing; }
  // All has been sent, the client has it, and both have said good-bye.
  bool IsFinished() const { return Finished; }
  std::uint64_t TradesSent() const { return Trades; }
  // The next report has been sent before, so that it need not wait for its time.
  bool IsRepeating() const { return Next < Events.size(); }
  // Empty while messages are held back to be written together.
  std::deque<VenueOutput>& Output() { return HeldBack > 0 ? None : Out; }
  // What is worth a line on the screen, since the last call.
  std::vector<std::string> TakeNotices() { return std::exchange(Notices, {}); }

  // What faults are made of.

  // The text of the next trade, which counts as sent; empty at the end of the day.
  std::string NextTrade(ReportForm form = ReportForm::Trade);
  // A trade that is none of the day's, with that number and from that CompID, or the venue's if it is empty.
  std::string StrayTrade(std::uint64_t number, std::string_view compId) const;
  // Takes a number for a message that is no report.
  std::uint64_t TakeNumber(std::uint64_t count = 1);
  std::uint64_t NextNumber() const { return Sent.size() + 1; }
  void Put(std::string_view bytes, std::size_t piece = 0);
  void SendAdmin(const char* type, const VenueText& fields = {}, std::uint64_t numbers = 1);
  // Of the last trade.
  void SendAbout(ReportForm form);
  void Resend(std::uint64_t from, std::uint64_t to);
  void HoldBack(std::uint64_t messages) { HeldBack = messages; }
  void BeSilent() { Silent = true; }
  void ResetAtLogon() { ResetDue = true; }
  void Close() { Closing = true; }
  void LogoutAndClose(const std::string& text);

 private:
  struct Event {
    std::uint32_t Trade;
    ReportForm Form;
    bool IsRepeat = false;
  };
  struct SentMessage {
    std::uint32_t Event;  // place in Events, or kAdmin
    VenueTime Time;
  };
  struct Header {
    std::uint64_t Number;
    VenueTime FirstSent = 0;       // of a message that is sent again under its number
    bool IsRepeat = false;         // under a new number
    std::string_view CompID = {};  // empty: the venue's
  };
  static constexpr std::uint32_t kAdmin = UINT32_MAX;

  std::string Make(const char* type, Header header, const VenueText& fields) const;
  std::string MakeReport(const Event& event, Header header) const;
  void SendEvent(std::uint32_t place);
  bool RunFault();
  void SendResent();
  void AskWhetherAllCame();

  void OnMessage(const std::string& message);
  bool IsForUs(const std::string& message) const;
  bool TakesNumber(const std::string& message);
  void OnLogon(const std::string& message);
  void OnResetAnswer(const std::string& message);
  void ResetNumbers();
  void AskAgain();
  void OnHeartbeat(const std::string& message);
  void OnTestRequest(const std::string& message);
  void OnResendRequest(const std::string& message);
  void OnReject(const std::string& message);
  void OnSequenceReset(const std::string& message);
  void OnLogout(const std::string& message);
  struct Handler {
    const char* Type;
    void (VenueSession::*Take)(const std::string& message);
  };
  static const Handler kHandlers[];

  VenueSettings Settings;
  const VenueDay& Day;
  const std::vector<VenueFault>& Faults;
  std::size_t NextFault = 0;

  std::string BeginString = "FIX.4.4";
  VenueFrames Frames;
  std::deque<VenueOutput> Out;
  std::deque<VenueOutput> None;
  std::vector<std::string> Notices;
  std::vector<Event> Events;      // the reports of the day so far
  std::vector<SentMessage> Sent;  // [n] has number n + 1
  std::size_t Next = 0;           // in Events
  std::uint64_t Trades = 0;
  std::uint64_t NextIn = 1;  // 0: whatever comes
  std::uint64_t ResendFrom = 0;
  std::uint64_t ResendTo = 0;
  std::uint64_t HeldBack = 0;
  std::uint64_t HeartbeatSeconds = 30;
  VenueTime Now = 0;
  VenueTime LastSent = 0;
  VenueTime LastHeard = 0;
  bool LoggedOn = false;
  bool Closing = false;
  bool Silent = false;
  bool ResetDue = false;
  bool AskedForRest = false;
  bool AskedAgain = false;
  bool SaidGoodBye = false;
  bool Finished = false;
};
