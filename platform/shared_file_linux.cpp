#include "platform/shared_file.h"

std::FILE* OpenSharedFile(const std::filesystem::path& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

bool SeekFile(std::FILE* stream, std::int64_t offset) noexcept {
  return fseeko(stream, offset, SEEK_SET) == 0;
}
