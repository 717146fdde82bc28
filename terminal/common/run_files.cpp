#include "terminal/common/run_files.h"

#include <string>

#include "platform/modules.h"

namespace {

using Path = std::filesystem::path;

Path SampleFolder() {
  return ProgramFolder() / "sample_day";
}

Path SampleDay() {
  return SampleFolder() / "trades.csv";
}

// The file given, else the one of that name beside the day, else the sample's.
Path SideFile(const Path& given, const Path& day, const char* name) {
  if (!given.empty()) return std::filesystem::absolute(given);
  Path beside = day.parent_path() / name;
  std::error_code error;
  return std::filesystem::exists(beside, error) ? beside : SampleFolder() / name;
}

Path GivenOr(const Path& given, const Path& otherwise) {
  return std::filesystem::absolute(given.empty() ? otherwise : given);
}

Path InFull(const Path& given) {
  return given.empty() ? Path() : std::filesystem::absolute(given);
}

}  // namespace

RunFiles::RunFiles(const Options& options)
    : Day(GivenOr(options.Day, SampleDay())),
      Securities(SideFile(options.Securities, Day, "securities.csv")),
      Desk(SideFile(options.Desk, Day, "desk.csv")),
      Plugin(GivenOr(options.Plugin, ProgramFolder() / (std::string("tradebook") + ModuleSuffix()))),
      Work(GivenOr(options.Work, "trade_book_work")),
      Record(InFull(options.Record)),
      Screenshot(InFull(options.Screenshot)),
      Script(InFull(options.Script)) {}

RunFiles RunFiles::WithDay(const Path& day) const {
  RunFiles files = *this;
  files.Day = std::filesystem::absolute(day);
  files.Securities = SideFile({}, files.Day, "securities.csv");
  files.Desk = SideFile({}, files.Day, "desk.csv");
  return files;
}

bool RunFiles::IsSampleDay() const {
  return Day == SampleDay();
}
