#include "platform/shared_file.h"

#include <unistd.h>

std::FILE* OpenSharedFile(const std::filesystem::path& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

bool SeekFile(std::FILE* stream, std::int64_t offset) noexcept {
  return fseeko(stream, offset, SEEK_SET) == 0;
}

bool CutFile(std::FILE* stream, std::int64_t size) noexcept {
  return SeekFile(stream, size) && ftruncate(fileno(stream), size) == 0;
}
