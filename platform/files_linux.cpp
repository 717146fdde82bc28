#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int kMostWriters = 64;  // of one file at the same time
constexpr int kMostLinks = 40;    // as the system follows

// Replaces a link by its target, which need not exist.
std::error_code FollowLinks(fs::path& file) {
  for (int links = 0; links < kMostLinks; ++links) {
    std::error_code error;
    const fs::file_type type = fs::symlink_status(file, error).type();
    if (type == fs::file_type::regular || type == fs::file_type::not_found) return {};
    if (type == fs::file_type::directory) return std::make_error_code(std::errc::is_a_directory);
    if (type != fs::file_type::symlink) return error ? error : std::make_error_code(std::errc::invalid_argument);
    const fs::path target = fs::read_symlink(file, error);
    if (error) return error;
    file = file.parent_path() / target;
  }
  return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

// Between open and flock, the writer that held the name may have renamed the file.
bool HasName(int file, const fs::path& name) {
  struct stat opened {};
  struct stat named {};
  errno = EBUSY;
  return fstat(file, &opened) == 0 && lstat(name.c_str(), &named) == 0 && S_ISREG(opened.st_mode) &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

// The empty file of that name, locked by us; below 0 on failure.
int OpenHeld(const fs::path& name) {
  const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
  if (file < 0) return file;
  if (flock(file, LOCK_EX | LOCK_NB) == 0 && HasName(file, name) && ftruncate(file, 0) == 0) return file;
  const int error = errno;
  close(file);
  errno = error;
  return -1;
}

int OpenBeside(const fs::path& file, fs::path& name) {
  int opened = -1;
  for (int i = 1; i <= kMostWriters && opened < 0; ++i) {
    name = file;
    name += i == 1 ? ".new" : ".new" + std::to_string(i);
    opened = OpenHeld(name);
  }
  return opened;
}

// The owner first: changing it may clear bits of the mode.
void KeepOwnerAndMode(int file, const fs::path& old) {
  struct stat kept {};
  if (stat(old.c_str(), &kept) != 0) return;
  const bool owned =
      fchown(file, kept.st_uid, kept.st_gid) == 0 || fchown(file, static_cast<uid_t>(-1), kept.st_gid) == 0;
  // Another group gets no more rights than everybody has.
  const mode_t mode = owned ? kept.st_mode : (kept.st_mode & ~mode_t{S_IRWXG}) | ((kept.st_mode & S_IRWXO) << 3);
  fchmod(file, mode & 07777);
}

bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool WriteAndRename(int opened, const fs::path& beside, const fs::path& file, std::string_view bytes) {
  KeepOwnerAndMode(opened, file);
  return WriteAll(opened, bytes) && fsync(opened) == 0 && std::rename(beside.c_str(), file.c_str()) == 0;
}

// The rename is on the disk once the folder is.
void FlushFolder(const fs::path& folder) {
  const int opened = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) return;
  fsync(opened);
  close(opened);
}

}  // namespace

bool ReplaceFileContent(const fs::path& file, std::string_view bytes, unsigned long& errorNumber) {
  fs::path target = file, beside;
  const std::error_code error = FollowLinks(target);
  errorNumber = static_cast<unsigned long>(error.value());
  if (error) return false;
  const int opened = OpenBeside(target, beside);
  const bool replaced = opened >= 0 && WriteAndRename(opened, beside, target, bytes);
  if (!replaced) errorNumber = static_cast<unsigned long>(errno);
  if (opened >= 0 && !replaced) unlink(beside.c_str());
  if (opened >= 0) close(opened);
  if (replaced) FlushFolder(target.parent_path());
  return replaced;
}

bool MoveToFreeName(const fs::path& from, const fs::path& to, unsigned long& errorNumber) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  // Some file systems lack RENAME_NOREPLACE; link does not replace a file either.
  const bool unknown = errno == EINVAL || errno == ENOSYS;
  if (unknown && link(from.c_str(), to.c_str()) == 0 && unlink(from.c_str()) == 0) return true;
  errorNumber = static_cast<unsigned long>(errno);
  return false;
}

std::FILE* OpenSharedFile(const std::filesystem::path& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

bool SeekFile(std::FILE* stream, std::int64_t offset) noexcept {
  return fseeko(stream, offset, SEEK_SET) == 0;
}

bool CutFile(std::FILE* stream, std::int64_t size) noexcept {
  return SeekFile(stream, size) && ftruncate(fileno(stream), size) == 0;
}
