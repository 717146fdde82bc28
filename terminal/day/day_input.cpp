#include "terminal/day/day_input.h"

#include <optional>
#include <string>
#include <utility>

#include "feeds/journal/journal_reader.h"
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
  return RunFiles().WithDay(DaySpec(day.empty() ? SampleFile("trades.csv") : day));
}

RunFiles RunFiles::WithDay(const DaySpec& day) const {
  RunFiles files = *this;
  files.Day = day;
  if (day.IsFeed()) {
    files.Securities = FeedSecurities.empty() ? SampleFile("securities.csv") : FeedSecurities;
    files.Desk = SampleFile("desk.csv");
  } else {
    files.Securities = SideFile(day.File, "securities.csv");
    files.Desk = SideFile(day.File, "desk.csv");
  }
  return files;
}

bool RunFiles::IsSampleDay() const {
  return !Day.IsFeed() && Day.File == SampleFile("trades.csv");
}

namespace {

constexpr std::size_t kBytesJudged = 65536;

class TradeSource : public MessageSource {
 public:
  TradeSource(const std::filesystem::path& file, const OrderDesk& desk, const SecurityList& securities,
              BadLineReport& badLines)
      : Day(file, badLines), Messages(desk, securities) {}

  DayStep Next(RawMessage& frame) override {
    if (!Day.Next(Trade)) return DayStep::End;
    Writer.emplace(kModePlain);
    Messages.Write(Trade, 9101, *Writer);
    Writer->Finish();
    frame = {Writer->Buffer, Writer->GetSize(), 0};
    return DayStep::Message;
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

  DayStep Next(RawMessage& frame) override { return Messages.Next(frame) ? DayStep::Message : DayStep::End; }
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

DayInput::DayInput(const RunFiles& files, std::optional<LiveFrom> live, BadLineReport& badLines,
                   const FeedOpener& openFeeds)
    : Securities(files.Securities, badLines), Day(files.Day), Kind(FormOf()), Live(live), BadLines(badLines) {
  if (Kind == Form::Feed) MakeFeed = openFeeds(Day, files.Work);
  if (Kind == Form::Csv) Desk.emplace(files.Desk, badLines);
}

DayInput::Form DayInput::FormOf() const {
  if (Day.IsFeed()) return Form::Feed;
  if (IsJournalFile(Day.File)) return Form::Journal;
  return IsMessageFile(Day.File) ? Form::Messages : Form::Csv;
}

NumberedDay& DayInput::Open() {
  const LiveFrom asNumbered;
  if (Kind == Form::Feed) return OpenFeed();
  if (Live) return OpenFrom(*Live);
  return Kind == Form::Csv ? OpenWithDownload(CountTradeLines(Day.File) / 2) : OpenFrom(asNumbered);
}

NumberedDay& DayInput::OpenWithDownload(std::uint64_t trades) {
  return Kind == Form::Feed ? OpenFeed() : OpenFrom({LiveFrom::Kind::Count, static_cast<std::int64_t>(trades)});
}

void DayInput::Check() {
  if (Kind != Form::Feed) Open();
}

NumberedDay& DayInput::OpenFrom(LiveFrom live) {
  Script.reset();
  BadLines.StartAgain(Day.File);
  return Script.emplace(OpenFile(), live);
}

std::unique_ptr<MessageSource> DayInput::OpenFile() {
  if (Kind == Form::Csv) return OpenTradeDay(Day.File, *Desk, Securities, BadLines);
  return Kind == Form::Journal ? OpenJournalDay(Day.File, BadLines) : OpenMessageDay(Day.File, BadLines);
}

// The new feed comes first: it may go on with the session of the one before.
NumberedDay& DayInput::OpenFeed() {
  Script.reset();
  std::unique_ptr<Feed> opened = MakeFeed();
  EndFeed({});
  Trades = std::move(opened);
  return Script.emplace(std::make_unique<FeedSource>(*Trades, News), LiveFrom{LiveFrom::Kind::CaughtUp, 0});
}

void DayInput::Close() {
  Script.reset();
  EndFeed(std::exchange(MakeFeed, {}));
}

// What the maker holds for its feeds may end with it.
void DayInput::EndFeed(FeedMaker maker) {
  if (Trades == nullptr && !maker) return;
  Ends.emplace_back([feed = std::move(Trades), last = std::move(maker)]() mutable {
    feed.reset();
    last = {};
  });
}

std::string DayInput::FeedText() const {
  return Trades == nullptr ? std::string() : FeedStateText(Trades->State(), Day.Name(), News.Alarms());
}

std::vector<FeedNote> DayInput::TakeNews() {
  return Trades == nullptr ? std::vector<FeedNote>() : News.Take(*Trades);
}
