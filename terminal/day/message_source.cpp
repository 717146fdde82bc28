#include "terminal/day/message_source.h"

#include <optional>

#include "host_link/messages/message_header.h"
#include "terminal/day/csv_reader.h"
#include "terminal/day/csv_tables.h"
#include "terminal/day/recordings.h"
#include "terminal/day/trade_message.h"

namespace {

constexpr std::size_t kBytesJudged = 65536;

class TradeSource : public MessageSource {
 public:
  TradeSource(const std::filesystem::path& file, const OrderDesk& desk, const SecurityList& securities,
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

class FileSource : public MessageSource {
 public:
  FileSource(const std::filesystem::path& file, BadLineReport& badLines) : Messages(file, badLines) {}

  bool Next(WireFrame& frame) override { return Messages.Next(frame); }
  void Report(const std::string& reason) override { Messages.Report(reason); }

 private:
  MessageFile Messages;
};

}  // namespace

bool IsMessageFile(const std::filesystem::path& file) {
  FileBytes bytes(file);
  return IsRecordFile(file) ||
         FindMessageHeader(bytes.Peek(kBytesJudged).substr(0, kBytesJudged), 0) != std::string_view::npos;
}

std::unique_ptr<MessageSource> OpenTradeDay(const std::filesystem::path& file, const OrderDesk& desk,
                                            const SecurityList& securities, BadLineReport& badLines) {
  return std::make_unique<TradeSource>(file, desk, securities, badLines);
}

std::unique_ptr<MessageSource> OpenMessageDay(const std::filesystem::path& file, BadLineReport& badLines) {
  return std::make_unique<FileSource>(file, badLines);
}
