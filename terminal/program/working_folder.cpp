#include "terminal/program/working_folder.h"

#include <algorithm>
#include <system_error>

#include "terminal/common/errors.h"
#include "terminal/program/window_memory.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kColumnProfiles = "ColumnProfile";
constexpr const char* kLeftByWindows[] = {WindowMemory::kFileName, "TradeBookSettings.xml"};

bool IsForNewFolder(const fs::path& sample) {
  return *sample.begin() == kColumnProfiles;
}

void Check(const std::error_code& error, const fs::path& path, const char* what) {
  if (error) ThrowFileError(path, what, error);
}

std::vector<fs::path> FilesBelow(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, error);
  Check(error, folder, "cannot be read");
  for (; entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    Check(error, folder, "cannot be read");
    if (entry->is_regular_file(error)) files.push_back(entry->path().lexically_relative(folder));
  }
  Check(error, folder, "cannot be read");
  return files;
}

void CopySample(const fs::path& sample, const fs::path& copy) {
  std::error_code error;
  fs::create_directories(copy.parent_path(), error);
  Check(error, copy.parent_path(), "cannot be made");
  fs::copy_file(sample, copy, error);
  Check(error, copy, "cannot be written");
}

}  // namespace

std::vector<fs::path> SamplesToCopy(std::vector<fs::path> samples,
                                    const std::function<bool(const fs::path&)>& isThere) {
  const auto others = std::stable_partition(samples.begin(), samples.end(), IsForNewFolder);
  if (std::any_of(others, samples.end(), isThere) || std::ranges::any_of(kLeftByWindows, isThere))
    samples.erase(samples.begin(), others);
  std::erase_if(samples, isThere);
  return samples;
}

void EnterWorkingFolder(const fs::path& folder, const fs::path& samples) {
  std::error_code error;
  fs::create_directories(folder, error);
  Check(error, folder, "cannot be made");
  const auto isThere = [&](const fs::path& file) { return fs::exists(folder / file, error); };
  for (const fs::path& sample : SamplesToCopy(FilesBelow(samples), isThere))
    CopySample(samples / sample, folder / sample);
  fs::current_path(folder, error);
  Check(error, folder, "cannot be entered");
}
