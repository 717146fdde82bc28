#include "platform/growing_file.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr std::size_t kLargestStep = 1 << 20;

HANDLE HandleOf(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);
}

std::intptr_t OpenHandle(const std::filesystem::path& file, DWORD access, DWORD share, DWORD creation) {
  return reinterpret_cast<std::intptr_t>(
      CreateFileW(file.c_str(), access, share, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr));
}

OVERLAPPED PlaceOf(std::uint64_t place) {
  OVERLAPPED overlapped{};
  overlapped.Offset = static_cast<DWORD>(place);
  overlapped.OffsetHigh = static_cast<DWORD>(place >> 32);
  return overlapped;
}

DWORD StepOf(std::size_t size) {
  return static_cast<DWORD>(std::min(size, kLargestStep));
}

}  // namespace

bool GrowingFile::OpenToRead(const std::filesystem::path& file) noexcept {
  Close();
  Handle = OpenHandle(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING);
  return Handle != -1;
}

bool GrowingFile::OpenToWrite(const std::filesystem::path& file, bool& isHeld) noexcept {
  Close();
  Handle = OpenHandle(file, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, OPEN_ALWAYS);
  isHeld = Handle == -1 && GetLastError() == ERROR_SHARING_VIOLATION;
  return Handle != -1;
}

void GrowingFile::Close() noexcept {
  if (Handle != -1) CloseHandle(HandleOf(Handle));
  Handle = -1;
}

bool GrowingFile::Size(std::uint64_t& size) const noexcept {
  LARGE_INTEGER value{};
  if (GetFileSizeEx(HandleOf(Handle), &value) == 0) return false;
  size = static_cast<std::uint64_t>(value.QuadPart);
  return true;
}

bool GrowingFile::Read(std::uint64_t place, void* bytes, std::size_t size, std::size_t& got) const noexcept {
  for (got = 0; got < size;) {
    OVERLAPPED at = PlaceOf(place + got);
    DWORD read = 0;
    if (ReadFile(HandleOf(Handle), static_cast<char*>(bytes) + got, StepOf(size - got), &read, &at) == 0)
      return GetLastError() == ERROR_HANDLE_EOF;
    if (read == 0) break;
    got += read;
  }
  return true;
}

bool GrowingFile::Write(std::uint64_t place, std::string_view bytes) noexcept {
  while (!bytes.empty()) {
    OVERLAPPED at = PlaceOf(place);
    DWORD written = 0;
    if (WriteFile(HandleOf(Handle), bytes.data(), StepOf(bytes.size()), &written, &at) == 0) return false;
    place += written;
    bytes.remove_prefix(written);
  }
  return true;
}

bool GrowingFile::Cut(std::uint64_t size) noexcept {
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(size);
  return SetFilePointerEx(HandleOf(Handle), end, nullptr, FILE_BEGIN) != 0 && SetEndOfFile(HandleOf(Handle)) != 0;
}
