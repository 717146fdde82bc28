#include "terminal/program/log_recording.h"

#include <algorithm>
#include <chrono>
#include <vector>

#include "feeds/day_log/log_writer.h"
#include "host_link/messages/packet_writer.h"
#include "terminal/common/errors.h"
#include "terminal/day/feed_opener.h"

namespace {

constexpr int kMostTries = 5;  // of one batch

// Trades that wait to be published together.
class Batch {
 public:
  explicit Batch(BatchTarget& log) : Log(log), Before(log.Connect()), Former(Before) {}

  std::uint64_t FormerMessages() const noexcept { return Former; }
  // Trade `number` of the day; a no-op for one that was there.
  void Add(std::uint64_t number, std::span<const std::uint8_t> message) {
    if (number <= Former) return;
    if (Messages.size() + message.size() > LogWriter::kMostBytes) Publish();
    Messages.insert(Messages.end(), message.begin(), message.end());
    ++Count;
  }
  void Publish() {
    for (int tries = 1; Count != 0 && !IsTaken(tries); ++tries) {
    }
    Before += Count;
    Count = 0;
    Messages.clear();
  }

 private:
  // The log may have taken a batch whose acknowledgement was lost.
  bool IsTaken(int tries) {
    try {
      Log.Publish(Before, Count, Messages);
      return true;
    } catch (const FeedError&) {
      if (tries == kMostTries) throw;
    }
    const std::uint64_t there = Log.Connect();
    if (there != Before && there != Before + Count)
      throw FeedError("another program writes into this log: it has " + WithThousands(there) + " messages");
    return there != Before;
  }

  BatchTarget& Log;
  std::uint64_t Before;
  std::uint64_t Former;
  std::uint32_t Count = 0;
  std::vector<std::uint8_t> Messages;
};

RecordedTrades RecordAll(NumberedDay& script, BatchTarget& log) {
  Batch batch(log);
  RecordedTrades recorded{.Former = batch.FormerMessages()};
  while (script.Next() == DayStep::Message) {
    CQORPacketWriter writer(kModePlain);
    if (script.IsTrade() && CopyMessage(script.Message(), writer))
      batch.Add(++recorded.All, {writer.GetData(), writer.GetSize()});
    else
      recorded.LeftOut += script.Message().MessageNumber == 8112 ? 0 : 1;
  }
  batch.Publish();
  return recorded;
}

class DayLog : public BatchTarget {
 public:
  explicit DayLog(const LogPlace& log) : Writer(log.Access, log.Day, 1) {}
  std::uint64_t Connect() override { return Writer.Connect(std::chrono::seconds(15)); }
  void Publish(std::uint64_t before, std::uint32_t count, std::span<const std::uint8_t> messages) override {
    Writer.Publish(before, count, messages);
  }

 private:
  LogWriter Writer;
};

}  // namespace

RecordedTrades RecordTradesInBatches(NumberedDay& script, BatchTarget& log) {
  try {
    return RecordAll(script, log);
  } catch (const FeedError& failure) {
    throw TerminalError(ExitCode::File, failure.what());
  }
}

std::string RecordedText(const RecordedTrades& recorded) {
  std::string text = WithThousands(recorded.All) + " trades";
  if (recorded.Former != 0)
    text += ", " + WithThousands(std::min(recorded.Former, recorded.All)) + " of them were there";
  if (recorded.Former > recorded.All)
    text += "; the log has " + WithThousands(recorded.Former - recorded.All) + " more";
  if (recorded.LeftOut != 0) text += "; other messages left out: " + WithThousands(recorded.LeftOut);
  return text;
}

std::unique_ptr<BatchTarget> OpenLogForRecording(const DaySpec& log) {
  try {
    return std::make_unique<DayLog>(PlaceOfLog(log));
  } catch (const FeedError& failure) {
    throw TerminalError(ExitCode::File, failure.what());
  }
}
