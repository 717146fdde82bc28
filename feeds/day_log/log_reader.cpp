#include "feeds/day_log/log_reader.h"

#include <algorithm>
#include <deque>
#include <optional>
#include <thread>
#include <utility>

#include "feeds/day_log/log_batch.h"
#include "feeds/day_log/nats_link.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using Step = LogReader::Step;

constexpr milliseconds kConnectTime(2000);
constexpr milliseconds kSilence(1000);
constexpr milliseconds kBetweenReads(500);
constexpr std::size_t kEnoughBytes = 512 * 1024;
constexpr std::size_t kPulledBytes = 4 * kEnoughBytes;
constexpr std::size_t kMostBatches = 1024;

}  // namespace

// Batches are pulled, each pull by a consumer on the server that acknowledges nothing and begins behind the last batch
// taken. After anything odd (an error, a gap, silence while the log grows) the consumer is made anew: a subscription of
// the client that lived through a change of servers may stall for good.
struct LogReader::State {
  State(LogAccess access, LogDay day) : Link(std::move(access)), Day(std::move(day)) {}

  Step TakeNext(std::vector<std::uint8_t>& messages, milliseconds atMost);
  bool Subscribe();
  bool SeeStream();
  void Pull(milliseconds atMost);
  void CheckSilence();
  Step Deliver(std::vector<std::uint8_t>& messages);
  Step Admit(std::vector<std::uint8_t>& messages);
  bool IsNext(natsMsg* message);
  void ReadAgain() noexcept;
  void Drop() noexcept;

  NatsLink Link;
  const LogDay Day;
  NatsPtr<natsSubscription> Subscription;
  std::deque<NatsPtr<natsMsg>> Pulled;
  int PullSize = 1;

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
  Pulled.clear();
  PullSize = 1;
  // Without its connection first, the end of a subscription would wait for an answer about its consumer.
  if (!Link.IsConnected()) Link.Close();
  Subscription.reset();
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
  if (Subscription == nullptr && !Subscribe()) return Step::Missing;
  if (Pulled.empty()) Pull(atMost);
  return Deliver(messages);
}

// False if there is no stream.
bool LogReader::State::Subscribe() {
  if (!SeeStream()) return false;
  jsSubOptions options;
  jsSubOptions_Init(&options);
  const std::string stream = Day.Stream();
  options.Stream = stream.c_str();
  options.Config.AckPolicy = js_AckNone;
  options.Config.DeliverPolicy = js_DeliverByStartSequence;
  options.Config.OptStartSeq = LastNumber + 1;
  options.Config.MemoryStorage = true;
  options.Config.Replicas = 1;
  natsSubscription* subscription = nullptr;
  jsErrCode code = jsErrCode(0);
  const natsStatus status =
      js_PullSubscribe(&subscription, Link.Stream(), Day.Subject().c_str(), nullptr, nullptr, &options, &code);
  if (status != NATS_OK) Link.Fail("the log " + Day.Subject() + " cannot be read", status, code);
  Subscription.reset(subscription);
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

// Waits for one batch, or for what the last pull says to be about kPulledBytes.
void LogReader::State::Pull(milliseconds atMost) {
  natsMsgList list = {};
  jsErrCode code = jsErrCode(0);
  const natsStatus status =
      natsSubscription_Fetch(&list, Subscription.get(), PullSize, std::max<std::int64_t>(atMost.count(), 1), &code);
  std::size_t bytes = 0;
  for (int i = 0; status == NATS_OK && i < list.Count; ++i) {
    bytes += static_cast<std::size_t>(natsMsg_GetDataLength(list.Msgs[i]));
    Pulled.emplace_back(std::exchange(list.Msgs[i], nullptr));
  }
  natsMsgList_Destroy(&list);
  if (status == NATS_TIMEOUT) return CheckSilence();
  if (status != NATS_OK) {
    Drop();
    Link.Fail("the log " + Day.Subject() + " cannot be read on", status, code);
  }
  LastSign = Clock::now();
  const std::size_t average = bytes / Pulled.size() + 1;
  PullSize = static_cast<int>(std::clamp<std::size_t>(kPulledBytes / average, 1, kMostBatches));
}

void LogReader::State::CheckSilence() {
  if (Clock::now() - LastSign < kSilence) return;
  LastSign = Clock::now();
  if (!SeeStream() || EndNumber > LastNumber) Drop();
}

Step LogReader::State::Deliver(std::vector<std::uint8_t>& messages) {
  const std::size_t before = messages.size();
  Step step = Step::Nothing;
  while (!Pulled.empty() && step != Step::Damaged && messages.size() - before < kEnoughBytes) step = Admit(messages);
  CaughtUp = CaughtUp || (Goal && LastNumber >= *Goal);
  if (step == Step::Damaged) return step;
  return messages.size() > before ? Step::Messages : Step::Nothing;
}

// Hands the first batch that was pulled to the order of the day.
Step LogReader::State::Admit(std::vector<std::uint8_t>& messages) {
  natsMsg* message = Pulled.front().get();
  if (!IsNext(message)) return Step::Nothing;
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
  Pulled.pop_front();
  return verdict == LogOrder::Verdict::Damaged ? Step::Damaged : Step::Messages;
}

// Drops a batch that was given, and the consumer if batches before this one are missing; once, as they may be deleted.
bool LogReader::State::IsNext(natsMsg* message) {
  jsMsgMetaData* got = nullptr;
  if (natsMsg_GetMetaData(&got, message) != NATS_OK) {
    Pulled.pop_front();
    return false;
  }
  const NatsPtr<jsMsgMetaData> data(got);
  const std::uint64_t number = data->Sequence.Stream;
  EndNumber = std::max(EndNumber, number + data->NumPending);
  if (number <= LastNumber) {
    Pulled.pop_front();
    return false;
  }
  if (number == LastNumber + 1) return true;
  if (GapAt != LastNumber) {
    GapAt = LastNumber;
    Drop();
    return false;
  }
  LastNumber = number - 1;
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
