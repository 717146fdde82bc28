// A journal as a day.
#include <span>
#include <string>
#include <vector>

#include "feeds/journal/journal_day.h"
#include "terminal/day/day_input.h"

namespace {

constexpr std::size_t kJournalBytes = 65536;  // taken at a time

// What the feeds call alarms are bad lines of this file.
class JournalSource : public MessageSource, private AlarmSink {
 public:
  JournalSource(const std::filesystem::path& file, BadLineReport& badLines)
      : File(file), BadLines(badLines), Day(file, MappingChoices(), *this) {}

  DayStep Next(RawMessage& frame) override {
    while (Begin == Bytes.size()) {
      Bytes.clear();
      Begin = 0;
      if (!Day.Take(Bytes, kJournalBytes) && Bytes.empty()) return DayStep::End;
    }
    const std::size_t size = WholeMessageSize(std::span(Bytes).subspan(Begin));
    if (size == 0) return DayStep::End;
    frame = {Bytes.data() + Begin, static_cast<std::uint16_t>(size), 0};
    Begin += size;
    return DayStep::Message;
  }
  void Report(const std::string& reason) override { BadLines.InFile(File, reason); }

 private:
  void OnAlarm(const Alarm& alarm) override { Report(std::string(NameOf(alarm.Kind)) + ": " + alarm.Text); }

  std::filesystem::path File;
  BadLineReport& BadLines;
  JournalDay Day;
  std::vector<std::uint8_t> Bytes;
  std::size_t Begin = 0;
};

}  // namespace

std::unique_ptr<MessageSource> OpenJournalDay(const std::filesystem::path& file, BadLineReport& badLines) {
  try {
    return std::make_unique<JournalSource>(file, badLines);
  } catch (const FeedError& failure) {
    throw TerminalError(ExitCode::File, failure.what());
  }
}
