#include "terminal/day/day_input.h"

#include <optional>
#include <string>
#include <utility>

#include "host_link/messages/message_header.h"
#include "platform/modules.h"
#include "terminal/day/csv_reader.h"
#include "terminal/day/csv_tables.h"
#include "terminal/day/message_file.h"
#include "terminal/day/trade_message.h"

namespace {

using Path = std::filesystem::path;

Path SampleFile(const char* name) {
  return ProgramFolder() / "sample_day" / name;
}

Path SideFile(const Path& day, const char* name) {
  Path beside = day.parent_path() / name;
  std::error_code error;
  return std::filesystem::exists(beside, error) ? beside : SampleFile(name);
}

}  // namespace

RunFiles RunFiles::OfDay(const Path& day) {
  return RunFiles().WithDay(day.empty() ? SampleFile("trades.csv") : day);
}

RunFiles RunFiles::WithDay(const Path& day) const {
  RunFiles files = *this;
  files.Day = std::filesystem::absolute(day);
  files.Securities = SideFile(files.Day, "securities.csv");
  files.Desk = SideFile(files.Day, "desk.csv");
  return files;
}

bool RunFiles::IsSampleDay() const {
  return Day == SampleFile("trades.csv");
}

namespace {

constexpr std::size_t kBytesJudged = 65536;

class TradeSource : public MessageSource {
 public:
  TradeSource(const std::filesystem::path& file, const OrderDesk& desk, const SecurityList& securities,
              BadLineReport& badLines)
      : Day(file, badLines), Messages(desk, securities) {}

  bool Next(RawMessage& frame) override {
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

  bool Next(RawMessage& frame) override { return Messages.Next(frame); }
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

DayInput::DayInput(const RunFiles& files, std::optional<LiveFrom> live, BadLineReport& badLines)
    : Securities(files.Securities, badLines), Day(files.Day), Live(live), BadLines(badLines) {
  if (!IsMessageFile(Day)) Desk.emplace(files.Desk, badLines);
}

NumberedDay& DayInput::Open() {
  const LiveFrom asNumbered;
  if (Live) return OpenFrom(*Live);
  return Desk ? OpenWithDownload(CountTradeLines(Day) / 2) : OpenFrom(asNumbered);
}

NumberedDay& DayInput::OpenWithDownload(std::uint64_t trades) {
  return OpenFrom({LiveFrom::Kind::Count, static_cast<std::int64_t>(trades)});
}

NumberedDay& DayInput::OpenFrom(LiveFrom live) {
  Script.reset();
  BadLines.StartAgain(Day);
  return Script.emplace(Desk ? OpenTradeDay(Day, *Desk, Securities, BadLines) : OpenMessageDay(Day, BadLines), live);
}
