#include "trade_data/record_files/file_impl.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "foundations/error_report.h"
#include "host_link/messages/message_header.h"
#include "platform/faults.h"
#include "platform/files.h"

namespace QOR::Base {

namespace {

constexpr std::size_t kLargestReader = 65535;
constexpr std::size_t kReadSize = std::size_t{1} << 20;

std::string DateTextOf(const std::tm& date) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d%02d%02d", date.tm_year + 1900, date.tm_mon + 1, date.tm_mday);
  return text;
}

std::string MomentTextOf(const std::tm& moment) {
  char text[32];
  std::snprintf(text, sizeof text, "_%02d%02d", moment.tm_hour, moment.tm_min);
  return DateTextOf(moment) + text;
}

std::error_code OpenFailure() {
  const auto error = static_cast<int>(LastSystemError());
  return error != 0 ? std::error_code(error, std::system_category()) : std::make_error_code(std::errc::io_error);
}

}  // namespace

void CQORFileImpl::SetName(std::filesystem::path folder, std::filesystem::path baseName,
                           std::filesystem::path extension) {
  Folder = std::move(folder);
  BaseName = std::move(baseName);
  Extension = std::move(extension);
  MakePath();
}

void CQORFileImpl::SetDate(const std::tm& date) {
  Dated = true;
  DateText = DateTextOf(date);
  MakePath();
}

void CQORFileImpl::MakePath() {
  Path = Folder / BaseName;
  if (Dated) Path += "_" + DateText;
  Path += Extension;
}

std::filesystem::path CQORFileImpl::BackupPath(const std::filesystem::path& backupFolder, const std::tm& moment) const {
  std::filesystem::path path = backupFolder / BaseName;
  path += "_" + MomentTextOf(moment);
  path += Extension;
  return path;
}

std::error_code CQORFileImpl::Open() {
  const QOR::Thread::CQORLockGuard guard(Section);
  std::error_code ignored;
  const bool exists = std::filesystem::exists(Path, ignored);
  File.reset();
  RestCount = 0;
  errno = 0;
  File.reset(OpenSharedFile(Path, exists ? "r+b" : "w+b"));
  if (File == nullptr) return OpenFailure();
  return {};
}

bool CQORFileImpl::Close() noexcept {
  const QOR::Thread::CQORLockGuard guard(Section);
  return File == nullptr || std::fclose(File.release()) == 0;
}

bool CQORFileImpl::WriteBytes(std::span<const std::uint8_t> bytes) {
  const QOR::Thread::CQORLockGuard guard(Section);
  return File != nullptr && CutRest() && std::fwrite(bytes.data(), 1, bytes.size(), File.get()) == bytes.size();
}

// After new messages the rest would be read as more of them.
bool CQORFileImpl::CutRest() noexcept {
  if (RestCount == 0) return true;
  if (!CutFile(File.get(), static_cast<std::int64_t>(LoadedCount))) return false;
  CQORLog::ReportFailure("Bytes behind the last whole message, cut off: " + std::to_string(RestCount), 0,
                         "QOR::Base::CQORFileImpl::WriteBytes", __LINE__);
  RestCount = 0;
  return true;
}

bool CQORFileImpl::Flush() noexcept {
  const QOR::Thread::CQORLockGuard guard(Section);
  return File == nullptr || std::fflush(File.get()) == 0;
}

std::vector<std::uint8_t> CQORFileImpl::ReadAll() {
  std::vector<std::uint8_t> bytes;
  std::rewind(File.get());
  for (std::size_t count = 0, room = kReadSize; room == kReadSize; count = bytes.size()) {
    bytes.resize(count + room);
    const std::size_t read = std::fread(bytes.data() + count, 1, room, File.get());
    bytes.resize(count + read);
    room = read;
  }
  bytes.shrink_to_fit();
  return bytes;
}

std::uint64_t CQORFileImpl::Load() {
  const QOR::Thread::CQORLockGuard guard(Section);
  LoadedCount = 0;
  if (File == nullptr) return 0;
  const std::vector<std::uint8_t> bytes = ReadAll();
  while (bytes.size() - LoadedCount > kHeaderSize) {
    const std::size_t size = std::min<std::size_t>(bytes.size() - LoadedCount, kLargestReader);
    CQORPacketReader reader(bytes.data() + LoadedCount, static_cast<std::uint16_t>(size));
    std::uint16_t needed = 0;
    std::uint16_t consumed = 0;
    if (!reader.ParseHeader(needed, consumed)) break;
    LoadedCount += consumed;
    try {
      LoadRecord(reader);
    } catch (...) {
    }
  }
  RestCount = bytes.size() - LoadedCount;
  // A stream needs a seek between reading and writing.
  SeekFile(File.get(), static_cast<std::int64_t>(LoadedCount));
  return LoadedCount;
}

bool CQORFileImpl::Backup(const std::filesystem::path& backupFolder, const std::tm& moment) {
  const QOR::Thread::CQORLockGuard guard(Section);
  std::error_code ignored;
  std::filesystem::create_directory(backupFolder, ignored);
  const bool written = Close();
  unsigned long error = LastSystemError();
  const bool moved = written && MoveToFreeName(Path, BackupPath(backupFolder, moment), error);
  if (!moved)
    CQORLog::ReportFailure(written ? "Rename failed: " : "Write failed: ", error, "QOR::Base::CQORFileImpl::Backup",
                           __LINE__);
  if (Open()) return false;
  if (!moved) std::fseek(File.get(), 0, SEEK_END);
  return moved;
}

}  // namespace QOR::Base
