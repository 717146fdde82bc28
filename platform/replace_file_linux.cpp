#include "platform/replace_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace {

bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool WriteToDisk(int file, std::string_view bytes) {
  bool written = WriteAll(file, bytes) && fsync(file) == 0;
  const int error = errno;
  if (close(file) != 0 && written) return false;
  errno = error;
  return written;
}

// The rename itself is on the disk once the folder is; where that cannot be asked for, the system does it in its time.
void FlushFolder(const std::filesystem::path& folder) {
  const int opened = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) return;
  fsync(opened);
  close(opened);
}

}  // namespace

bool ReplaceFileContent(const std::filesystem::path& file, std::string_view bytes, unsigned long& errorNumber) {
  std::filesystem::path beside = file;
  beside += ".new";
  const std::filesystem::path folder = file.parent_path();
  const int opened = open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (opened < 0 || !WriteToDisk(opened, bytes) || std::rename(beside.c_str(), file.c_str()) != 0) {
    errorNumber = static_cast<unsigned long>(errno);
    if (opened >= 0) unlink(beside.c_str());
    return false;
  }
  FlushFolder(folder);
  return true;
}
