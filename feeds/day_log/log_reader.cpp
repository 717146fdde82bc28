#include "feeds/day_log/log_reader.h"

#include <algorithm>
#include <optional>
#include <thread>

#include "feeds/day_log/log_batch.h"
#include "feeds/day_log/log_consumer.h"
#include "feeds/day_log/nats_link.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using Step = LogReader::Step;

constexpr milliseconds kConnectTime(2000);
constexpr milliseconds kSilence(1000);
constexpr milliseconds kBetweenReads(500);
constexpr std::size_t kEnoughBytes = 512 * 1024;

}  // namespace

// A consumer on the server begins behind the last batch taken and acknowledges nothing. After anything odd (an error, a
// gap, silence while the log grows) it is made anew: one that lived through a change of servers may stall for good.
struct LogReader::State {
  State(LogAccess access, LogDay day) : Link(std::move(access)), Day(std::move(day)) {}

  Step TakeNext(std::vector<std::uint8_t>& messages, milliseconds atMost);
  bool MakeConsumer();
  bool SeeStream();
  bool Pull(milliseconds atMost);
  void CheckSilence();
  Step Deliver(std::vector<std::uint8_t>& messages, milliseconds atMost);
  Step Admit(std::vector<std::uint8_t>& messages);
  bool IsNext();
  void ReadAgain() noexcept;
  void Drop() noexcept;

  NatsLink Link;
  const LogDay Day;
  std::optional<LogConsumer> Consumer;
  LogConsumer::Batch Pulled;  // the batch that is next, if it has come

  LogOrder Order;
  std::uint64_t LastNumber = 0;          // of the batch taken last
  std::uint64_t EndNumber = 0;           // of the last batch in the log, as far as is known
  std::int64_t Created = 0;              // when the stream was made
  std::optional<std::uint64_t> Goal;     // the end of the log when it was first reached
  std::optional<std::uint64_t> GapAt;    // after that number the next ones are missing, as was asked twice
  std::optional<std::int64_t> OtherLog;  // made then, and holding another day
  bool CaughtUp = false;
  Clock::time_point LastSign;  // of a batch, or of the server's word that there is none
  std::string Why;
};

void LogReader::State::Drop() noexcept {
  Pulled = {};
  Consumer.reset();
  if (!Link.IsConnected()) Link.Close();
}

void LogReader::State::ReadAgain() noexcept {
  LastNumber = 0;
  GapAt.reset();
  Order.BeginAgain();
  Drop();
}

Step LogReader::State::TakeNext(std::vector<std::uint8_t>& messages, milliseconds atMost) {
  if (!Link.IsConnected()) {
    Drop();
    Link.Connect(kConnectTime);
  }
  if (!Consumer && !MakeConsumer()) return Step::Missing;
  return Deliver(messages, atMost);
}

// False if there is no stream.
bool LogReader::State::MakeConsumer() {
  if (!SeeStream()) return false;
  Consumer.emplace(Link, Day, LastNumber + 1);
  LastSign = Clock::now();
  return true;
}

// Learns the end of the log, and whether it is still the log that was read. False if there is none.
bool LogReader::State::SeeStream() {
  const NatsPtr<jsStreamInfo> info = Link.StreamInfo(Day, kLogAnswerTime);
  if (info == nullptr) return false;
  if (OtherLog == info->Created)
    throw FeedError(Link.Server() + ": the log " + Day.Subject() +
                    " now holds other trades than those that were read from it");
  const bool isAnother = Created != 0 && (Created != info->Created || info->State.LastSeq < LastNumber);
  Created = info->Created;
  OtherLog.reset();
  EndNumber = info->State.LastSeq;
  if (isAnother) ReadAgain();
  if (info->State.FirstSeq > 0) LastNumber = std::max(LastNumber, info->State.FirstSeq - 1);
  if (!Goal) Goal = EndNumber;
  CaughtUp = CaughtUp || LastNumber >= *Goal;
  return true;
}

// Waits for the next batch; false if none has come.
bool LogReader::State::Pull(milliseconds atMost) {
  if (Pulled.Message != nullptr) return true;
  Pulled = Consumer->Next(atMost);
  if (Pulled.Message == nullptr) {
    CheckSilence();
    return false;
  }
  LastSign = Clock::now();
  EndNumber = std::max(EndNumber, Pulled.Number + Pulled.Pending);
  return true;
}

void LogReader::State::CheckSilence() {
  if (Clock::now() - LastSign < kSilence) return;
  LastSign = Clock::now();
  if (!SeeStream() || EndNumber > LastNumber) Drop();
}

// Waits for the first batch alone, and takes what else has come.
Step LogReader::State::Deliver(std::vector<std::uint8_t>& messages, milliseconds atMost) {
  const std::size_t before = messages.size();
  Step step = Step::Nothing;
  while (step != Step::Damaged && messages.size() - before < kEnoughBytes && Consumer && Pull(atMost)) {
    step = Admit(messages);
    atMost = milliseconds(0);
  }
  CaughtUp = CaughtUp || (Goal && LastNumber >= *Goal);
  if (step == Step::Damaged) return step;
  return messages.size() > before ? Step::Messages : Step::Nothing;
}

// Hands the batch that was pulled to the order of the day.
Step LogReader::State::Admit(std::vector<std::uint8_t>& messages) {
  if (!IsNext()) return Step::Nothing;
  natsMsg* message = Pulled.Message.get();
  const char* id = nullptr;
  if (natsMsgHeader_Get(message, kBatchIdHeader, &id) != NATS_OK || id == nullptr) id = "";
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(natsMsg_GetData(message));
  const auto size = static_cast<std::size_t>(natsMsg_GetDataLength(message));
  const LogOrder::Verdict verdict = Order.Admit(id, {bytes, size}, messages);
  const std::string name = "batch " + std::to_string(LastNumber + 1) + " of the log " + Day.Subject();
  switch (verdict) {
    case LogOrder::Verdict::Missing:
      Why = "before " + name + " " + Order.Reason();
      return Step::Damaged;
    case LogOrder::Verdict::Again:
      ReadAgain();
      return Step::Nothing;
    case LogOrder::Verdict::Other:
      OtherLog = Created;
      ReadAgain();
      return Step::Nothing;
    case LogOrder::Verdict::Damaged:
      Why = name + " is left out: " + Order.Reason();
      break;
    case LogOrder::Verdict::Taken:
      break;
  }
  ++LastNumber;
  Pulled = {};
  return verdict == LogOrder::Verdict::Damaged ? Step::Damaged : Step::Messages;
}

// Drops a batch that was given, and the consumer if batches before this one are missing; once, as they may be deleted.
bool LogReader::State::IsNext() {
  if (Pulled.Number <= LastNumber) {
    Pulled = {};
    return false;
  }
  if (Pulled.Number == LastNumber + 1) return true;
  if (GapAt != LastNumber) {
    GapAt = LastNumber;
    Drop();
    return false;
  }
  LastNumber = Pulled.Number - 1;
  return true;
}

LogReader::LogReader(LogAccess access, LogDay day) : Self(std::make_unique<State>(std::move(access), std::move(day))) {}

LogReader::~LogReader() = default;

Step LogReader::Take(std::vector<std::uint8_t>& messages, milliseconds atMost) {
  Step step = Step::Lost;
  try {
    step = Self->TakeNext(messages, atMost);
    if (step == Step::Missing) Self->Why = "there is no log " + Self->Day.Subject() + " yet";
  } catch (const FeedError& error) {
    Self->Why = error.what();
    Self->Drop();
  }
  if (step == Step::Lost || step == Step::Missing) std::this_thread::sleep_for(std::min(atMost, kBetweenReads));
  return step;
}

const std::string& LogReader::Reason() const noexcept {
  return Self->Why;
}

bool LogReader::IsCaughtUp() const noexcept {
  return Self->CaughtUp;
}

std::uint64_t LogReader::Behind() const noexcept {
  return Self->EndNumber - std::min(Self->EndNumber, Self->LastNumber);
}

void LogReader::Cancel() noexcept {
  Self->Link.Cancel();
}

const std::string& LogReader::Server() const noexcept {
  return Self->Link.Server();
}
