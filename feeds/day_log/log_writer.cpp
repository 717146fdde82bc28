#include "feeds/day_log/log_writer.h"

#include <algorithm>
#include <thread>

#include "feeds/day_log/log_batch.h"
#include "feeds/day_log/nats_link.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kBetweenTries(200);
// Batches of others behind the last one of ours, which are passed over to find it.
constexpr std::uint64_t kMostForeign = 1000;

}  // namespace

struct LogWriter::State {
  State(LogAccess access, LogDay day, int replicas)
      : Link(std::move(access)), Day(std::move(day)), Replicas(replicas) {}

  void Open(milliseconds atMost);
  NatsPtr<jsStreamInfo> MakeStream();
  void CheckSubject(const jsStreamInfo& info) const;
  void FindEnd(const jsStreamInfo& info);
  std::uint64_t IdAt(std::uint64_t number);
  void Append(std::uint64_t count, std::span<const std::uint8_t> messages);

  NatsLink Link;
  const LogDay Day;
  const int Replicas;
  bool Ready = false;
  std::uint64_t Count = 0;       // of messages in the log
  std::uint64_t LastNumber = 0;  // of stored batches
};

void LogWriter::State::Open(milliseconds atMost) {
  Link.Connect(atMost);
  NatsPtr<jsStreamInfo> info = Link.StreamInfo(Day, kLogAnswerTime);
  if (info == nullptr) info = MakeStream();
  CheckSubject(*info);
  FindEnd(*info);
  Ready = true;
}

// Two writers at once may both make it: the second one gets what the first has made.
NatsPtr<jsStreamInfo> LogWriter::State::MakeStream() {
  const std::string name = Day.Stream();
  const std::string subject = Day.Subject();
  const char* subjects[] = {subject.c_str()};
  jsStreamConfig config;
  jsStreamConfig_Init(&config);
  config.Name = name.c_str();
  config.Subjects = subjects;
  config.SubjectsLen = 1;
  config.Storage = js_FileStorage;
  config.Discard = js_DiscardNew;
  config.Replicas = Replicas;
  jsStreamInfo* info = nullptr;
  jsErrCode code = jsErrCode(0);
  const natsStatus status = js_AddStream(&info, Link.Stream(), &config, nullptr, &code);
  if (status != NATS_OK) Link.Fail("the log " + subject + " cannot be made", status, code);
  return NatsPtr<jsStreamInfo>(info);
}

void LogWriter::State::CheckSubject(const jsStreamInfo& info) const {
  const jsStreamConfig* config = info.Config;
  if (config == nullptr || config->SubjectsLen != 1 || Day.Subject() != config->Subjects[0])
    throw FeedError("the stream " + Day.Stream() + " has other subjects than " + Day.Subject() + " alone");
}

// The last batch with an id tells the count; batches without one are not ours, and readers leave them out.
void LogWriter::State::FindEnd(const jsStreamInfo& info) {
  LastNumber = info.State.LastSeq;
  Count = 0;
  const std::uint64_t passed = LastNumber > kMostForeign ? LastNumber - kMostForeign : 0;
  const std::uint64_t lowest = std::max(std::max<std::uint64_t>(info.State.FirstSeq, 1), passed);
  for (std::uint64_t number = LastNumber; Count == 0 && number >= lowest; --number) Count = IdAt(number);
  if (Count == 0 && info.State.Msgs > 0)
    throw FeedError("the log " + Day.Subject() + " holds messages that no writer of trades has made");
}

// The id of that stored batch; 0 if there is none.
std::uint64_t LogWriter::State::IdAt(std::uint64_t number) {
  natsMsg* got = nullptr;
  jsErrCode code = jsErrCode(0);
  const natsStatus status = js_GetMsg(&got, Link.Stream(), Day.Stream().c_str(), number, nullptr, &code);
  const NatsPtr<natsMsg> message(got);
  if (status == NATS_NOT_FOUND) return 0;
  if (status != NATS_OK) Link.Fail("the end of the log " + Day.Subject() + " cannot be read", status, code);
  const char* id = nullptr;
  if (natsMsgHeader_Get(got, kBatchIdHeader, &id) != NATS_OK) return 0;
  return ParseBatchId(id).value_or(0);
}

// Intentional: without the id of JetStream, Nats-Msg-Id. A server knows ids only within a window of time: a batch after
// a quiet time and a restart would be refused, and one whose id was used by somebody else would be lost. The expected
// number of the batch before has neither trouble, and as surely stores a batch once.
void LogWriter::State::Append(std::uint64_t count, std::span<const std::uint8_t> messages) {
  Ready = false;
  const std::string stream = Day.Stream();
  const std::string what = "the log " + Day.Subject() + " did not take a batch";
  natsMsg* made = nullptr;
  natsStatus status = natsMsg_Create(&made, Day.Subject().c_str(), nullptr,
                                     reinterpret_cast<const char*>(messages.data()), static_cast<int>(messages.size()));
  const NatsPtr<natsMsg> message(made);
  if (status == NATS_OK) status = natsMsgHeader_Set(made, kBatchIdHeader, std::to_string(count).c_str());
  if (status != NATS_OK) Link.Fail(what, status);
  jsPubOptions options;
  jsPubOptions_Init(&options);
  options.ExpectStream = stream.c_str();
  options.ExpectLastSeq = LastNumber;
  options.ExpectNoMessage = LastNumber == 0;
  options.MaxWait = kLogAnswerTime.count();
  jsPubAck* got = nullptr;
  jsErrCode code = jsErrCode(0);
  status = js_PublishMsg(&got, Link.Stream(), made, &options, &code);
  const NatsPtr<jsPubAck> ack(got);
  if (status != NATS_OK) Link.Fail(what, status, code);
  Count = count;
  LastNumber = ack->Sequence;
  Ready = true;
}

LogWriter::LogWriter(LogAccess access, LogDay day, int replicas)
    : Self(std::make_unique<State>(std::move(access), std::move(day), replicas)) {}

LogWriter::~LogWriter() = default;

std::uint64_t LogWriter::Connect(milliseconds atMost) {
  const Clock::time_point end = Clock::now() + atMost;
  Self->Ready = false;
  for (;;) {
    try {
      const auto left = std::chrono::duration_cast<milliseconds>(end - Clock::now());
      Self->Open(std::clamp(left, kBetweenTries, kLogAnswerTime));
      return Self->Count;
    } catch (const LogTrouble&) {
      if (Clock::now() + kBetweenTries >= end) throw;
    }
    std::this_thread::sleep_for(kBetweenTries);
  }
}

void LogWriter::Publish(std::uint64_t before, std::uint32_t count, std::span<const std::uint8_t> messages) {
  State& self = *Self;
  if (!self.Ready) throw FeedError("the log " + self.Day.Subject() + " is not connected");
  if (before != self.Count)
    throw FeedError("the log " + self.Day.Subject() + " ends with message " + std::to_string(self.Count) + ", not " +
                    std::to_string(before));
  if (messages.size() > kMostBytes || CountTradeMessages(messages) != count)
    throw FeedError("a batch for the log " + self.Day.Subject() + " does not hold " + std::to_string(count) +
                    " whole plain trade messages of at most 262,144 bytes together");
  self.Append(before + count, messages);
}
