#include "terminal/common/run_files.h"

#include <string>

#include "platform/modules.h"

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
