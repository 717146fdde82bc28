#include "platform/files.h"

#include <io.h>
#include <share.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestWrite = 1 << 20;
constexpr int kMostWriters = 64;  // of one file at the same time
// A rename fails while another process has the old file open: about two seconds of attempts.
constexpr int kRenameAttempts = 250;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kKeptAttributes =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

bool IsThere(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES;
}

fs::path NameOf(HANDLE file) {
  std::wstring name(32768, L'\0');
  const DWORD size = GetFinalPathNameByHandleW(file, name.data(), static_cast<DWORD>(name.size()), 0);
  return size < name.size() ? name.substr(0, size) : std::wstring();
}

// The target of a link. The name of a missing target is found by creating it for the time of the question.
fs::path FollowLinks(const fs::path& file) {
  HANDLE opened = CreateFileW(file.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (opened == INVALID_HANDLE_VALUE && IsThere(GetFileAttributesW(file.c_str())))
    opened =
        CreateFileW(file.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return file;
  const fs::path name = NameOf(opened);
  CloseHandle(opened);
  return name.empty() ? file : name;
}

// No other writer can open the file until the handle is closed; it can be renamed.
HANDLE OpenBeside(const fs::path& file, fs::path& name) {
  HANDLE opened = INVALID_HANDLE_VALUE;
  for (int i = 1; i <= kMostWriters && opened == INVALID_HANDLE_VALUE; ++i) {
    name = file;
    name += i == 1 ? L".new" : L".new" + std::to_wstring(i);
    opened = CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  return opened;
}

void KeepAccessAndAttributes(const fs::path& file, const fs::path& old, DWORD attributes) {
  DWORD size = 0;
  GetFileSecurityW(old.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<BYTE> access(size);
  if (size != 0 && GetFileSecurityW(old.c_str(), DACL_SECURITY_INFORMATION, access.data(), size, &size) != 0)
    SetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, access.data());
  const DWORD kept = attributes & kKeptAttributes;
  SetFileAttributesW(file.c_str(), kept != 0 ? kept : FILE_ATTRIBUTE_NORMAL);
}

bool WriteAll(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(bytes.size(), kLargestWrite));
    if (WriteFile(file, bytes.data(), size, &written, nullptr) == 0) return false;
    bytes.remove_prefix(written);
  }
  return true;
}

bool MayPass(DWORD error) {
  return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
}

bool RenameOver(const fs::path& from, const fs::path& to) {
  for (int attempt = 0; attempt < kRenameAttempts; ++attempt) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) return true;
    if (!MayPass(GetLastError())) return false;
    Sleep(attempt < kRenameAttempts / 5 ? 1 : 10);
  }
  SetLastError(ERROR_SHARING_VIOLATION);
  return false;
}

bool WriteAndRename(HANDLE opened, const fs::path& beside, const fs::path& file, std::string_view bytes) {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  SetLastError(ERROR_ACCESS_DENIED);
  if (IsThere(attributes) && (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) return false;
  if (IsThere(attributes)) KeepAccessAndAttributes(beside, file, attributes);
  // Drops what a killed process has left under this name.
  return SetEndOfFile(opened) != 0 && WriteAll(opened, bytes) && FlushFileBuffers(opened) != 0 &&
         RenameOver(beside, file);
}

}  // namespace

bool ReplaceFileContent(const fs::path& file, std::string_view bytes, unsigned long& errorNumber) {
  const fs::path target = FollowLinks(file);
  fs::path beside;
  const HANDLE opened = OpenBeside(target, beside);
  const bool isOpen = opened != INVALID_HANDLE_VALUE;
  const bool replaced = isOpen && WriteAndRename(opened, beside, target, bytes);
  errorNumber = replaced ? 0 : GetLastError();
  if (isOpen && !replaced) DeleteFileW(beside.c_str());
  if (isOpen) CloseHandle(opened);
  return replaced;
}

bool MoveToFreeName(const fs::path& from, const fs::path& to, unsigned long& errorNumber) {
  if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_COPY_ALLOWED) != 0) return true;
  errorNumber = GetLastError();
  return false;
}

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
