#include "platform/growing_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

int Descriptor(std::intptr_t handle) {
  return static_cast<int>(handle);
}

void IgnoreSizeSignal() {
  struct sigaction action {};
  if (sigaction(SIGXFSZ, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) return;
  action.sa_handler = SIG_IGN;
  sigaction(SIGXFSZ, &action, nullptr);
}

}  // namespace

bool GrowingFile::OpenToRead(const std::filesystem::path& file) noexcept {
  Close();
  // Does not wait where the name is that of a pipe.
  Handle = open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  return Handle >= 0;
}

bool GrowingFile::OpenToWrite(const std::filesystem::path& file, bool& isHeld) noexcept {
  Close();
  isHeld = false;
  IgnoreSizeSignal();
  Handle = open(file.c_str(), O_RDWR | O_CREAT | O_NONBLOCK | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (Handle < 0) return false;
  if (flock(Descriptor(Handle), LOCK_EX | LOCK_NB) == 0) return true;
  const int error = errno;
  isHeld = error == EWOULDBLOCK;
  Close();
  errno = error;
  return false;
}

void GrowingFile::Close() noexcept {
  if (Handle >= 0) close(Descriptor(Handle));
  Handle = -1;
}

bool GrowingFile::Size(std::uint64_t& size) const noexcept {
  struct stat status {};
  if (fstat(Descriptor(Handle), &status) != 0) return false;
  size = static_cast<std::uint64_t>(status.st_size);
  return true;
}

bool GrowingFile::Read(std::uint64_t place, void* bytes, std::size_t size, std::size_t& got) const noexcept {
  for (got = 0; got < size;) {
    const ssize_t read =
        pread(Descriptor(Handle), static_cast<char*>(bytes) + got, size - got, static_cast<off_t>(place + got));
    if (read < 0 && errno != EINTR) return false;
    if (read == 0) break;
    if (read > 0) got += static_cast<std::size_t>(read);
  }
  return true;
}

bool GrowingFile::Write(std::uint64_t place, std::string_view bytes) noexcept {
  while (!bytes.empty()) {
    const ssize_t written = pwrite(Descriptor(Handle), bytes.data(), bytes.size(), static_cast<off_t>(place));
    if (written == 0) errno = ENOSPC;
    if (written <= 0 && errno != EINTR) return false;
    if (written < 0) continue;
    place += static_cast<std::uint64_t>(written);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool GrowingFile::Cut(std::uint64_t size) noexcept {
  return ftruncate(Descriptor(Handle), static_cast<off_t>(size)) == 0;
}
