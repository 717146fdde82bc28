#include "grid_base/settings/grid_folders.h"

#include <algorithm>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr fs::path::value_type kSeparators[] = {'\\', '/', 0};

// Joins texts: a part that looks like a drive or a root does not replace what stands before it.
void AppendPart(fs::path& path, const fs::path::string_type& part) {
  path += fs::path::preferred_separator;
  path += part;
}

}  // namespace

fs::path BuildFolderPath(const fs::path& relativeFolder, const fs::path& fileName, const fs::path& baseFolder) {
  if (relativeFolder.empty()) return {};
  fs::path path = baseFolder;
  const fs::path::string_type& parts = relativeFolder.native();
  for (std::size_t at = 0; at < parts.size();) {
    const std::size_t end = std::min(parts.find_first_of(kSeparators, at), parts.size());
    if (end > at) {
      AppendPart(path, parts.substr(at, end - at));
      std::error_code ignored;
      fs::create_directory(path, ignored);
    }
    at = end + 1;
  }
  if (!fileName.empty()) AppendPart(path, fileName.native());
  return path;
}
