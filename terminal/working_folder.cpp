#include "terminal/working_folder.h"

#include <system_error>

#include "terminal/terminal_error.h"

namespace fs = std::filesystem;

namespace {

void Check(const std::error_code& error, const fs::path& path, const char* what) {
  if (error) ThrowFileError(path, what, error);
}

void CopySample(const fs::path& sample, const fs::path& copy) {
  std::error_code error;
  if (fs::exists(copy, error)) return;
  Check(error, copy, "cannot be looked up");
  fs::create_directories(copy.parent_path(), error);
  Check(error, copy.parent_path(), "cannot be made");
  fs::copy_file(sample, copy, error);
  Check(error, copy, "cannot be written");
}

}  // namespace

void EnterWorkingFolder(const fs::path& folder, const fs::path& samples) {
  std::error_code error;
  fs::create_directories(folder, error);
  Check(error, folder, "cannot be made");
  fs::recursive_directory_iterator entry(samples, error);
  Check(error, samples, "cannot be read");
  for (; entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    Check(error, samples, "cannot be read");
    if (entry->is_regular_file(error)) CopySample(entry->path(), folder / entry->path().lexically_relative(samples));
  }
  Check(error, samples, "cannot be read");
  fs::current_path(folder, error);
  Check(error, folder, "cannot be entered");
}
