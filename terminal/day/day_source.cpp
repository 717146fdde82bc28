#include "terminal/day/day_source.h"

#include <charconv>
#include <optional>

#include "host_link/messages/message_header.h"
#include "terminal/day/csv_file.h"
#include "terminal/day/recordings.h"
#include "terminal/day/trade_file.h"
#include "terminal/day/trade_message.h"

namespace {

constexpr std::size_t kBytesJudged = 65536;

class TradeDaySource : public DaySource {
 public:
  TradeDaySource(const std::filesystem::path& file, const OrderDesk& desk, const SecurityList& securities,
                 BadLineReport& badLines)
      : Day(file, badLines), Messages(desk, securities) {}

  bool Next(WireFrame& frame) override {
    if (!Day.Next(Trade)) return false;
    Writer.emplace(kModePlain);
    Messages.Write(Trade, 9101, *Writer);
    Writer->Finish();
    frame = {Writer->Buffer, Writer->GetSize(), 0};
    return true;
  }
  void Report(const std::string& reason) override { Day.Report(reason); }

 private:
  TradeDay Day;
  TradeMessages Messages;
  DayTrade Trade;
  std::optional<CQORPacketWriter> Writer;
};

class MessageDaySource : public DaySource {
 public:
  MessageDaySource(const std::filesystem::path& file, BadLineReport& badLines) : Messages(file, badLines) {}

  bool Next(WireFrame& frame) override { return Messages.Next(frame); }
  void Report(const std::string& reason) override { Messages.Report(reason); }

 private:
  MessageFile Messages;
};

}  // namespace

bool IsMessageDay(const std::filesystem::path& file) {
  FileBytes bytes(file);
  return IsRecordFile(file) ||
         FindMessageHeader(bytes.Peek(kBytesJudged).substr(0, kBytesJudged), 0) != std::string_view::npos;
}

std::unique_ptr<DaySource> OpenTradeDay(const std::filesystem::path& file, const OrderDesk& desk,
                                        const SecurityList& securities, BadLineReport& badLines) {
  return std::make_unique<TradeDaySource>(file, desk, securities, badLines);
}

std::unique_ptr<DaySource> OpenMessageDay(const std::filesystem::path& file, BadLineReport& badLines) {
  return std::make_unique<MessageDaySource>(file, badLines);
}

std::optional<LiveFrom> ParseLiveFrom(std::string_view text) {
  DayTime time;
  if (ParseDayTime(text, time)) return LiveFrom{LiveFrom::Kind::Instant, time.Seconds};
  std::int64_t value = 0;
  if (ParseTimeOfDay(text, value)) return LiveFrom{LiveFrom::Kind::TimeOfDay, value};
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || rest != end || value < 0 || text.starts_with('-')) return std::nullopt;
  return LiveFrom{LiveFrom::Kind::Count, value};
}
