#include "platform/shared_file.h"

#include <io.h>
#include <share.h>

#include <string>

static_assert(_SH_DENYWR == 32);

std::FILE* OpenSharedFile(const std::filesystem::path& path, const char* mode) {
  const std::string narrow(mode);
  const std::wstring wide(narrow.begin(), narrow.end());
  return _wfsopen(path.c_str(), wide.c_str(), _SH_DENYWR);
}

bool SeekFile(std::FILE* stream, std::int64_t offset) noexcept {
  return _fseeki64(stream, offset, SEEK_SET) == 0;
}

bool CutFile(std::FILE* stream, std::int64_t size) noexcept {
  return SeekFile(stream, size) && _chsize_s(_fileno(stream), size) == 0;
}
