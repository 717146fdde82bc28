#include "platform/replace_file.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr std::size_t kLargestWrite = 1 << 20;

bool WriteAll(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    if (WriteFile(file, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kLargestWrite)), &written, nullptr) ==
        0)
      return false;
    bytes.remove_prefix(written);
  }
  return true;
}

bool WriteToDisk(HANDLE file, std::string_view bytes) {
  const bool written = WriteAll(file, bytes) && FlushFileBuffers(file) != 0;
  const DWORD error = GetLastError();
  CloseHandle(file);
  SetLastError(error);
  return written;
}

}  // namespace

bool ReplaceFileContent(const std::filesystem::path& file, std::string_view bytes, unsigned long& errorNumber) {
  std::filesystem::path beside = file;
  beside += L".new";
  const HANDLE opened =
      CreateFileW(beside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  const bool isOpen = opened != INVALID_HANDLE_VALUE;
  if (isOpen && WriteToDisk(opened, bytes) &&
      MoveFileExW(beside.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
    return true;
  errorNumber = GetLastError();
  if (isOpen) DeleteFileW(beside.c_str());
  return false;
}
