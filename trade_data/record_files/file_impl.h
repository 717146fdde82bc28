// CQORFileImpl: a file of records. The plug-in opens none.
//
//   record file := message*        (message_header.h; each as EncodeRecord of the derived class writes it)
//
// Operations on the open file hold the instance's lock; set the names before it is opened.
#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "foundations/qor_lock.h"
#include "host_link/messages/packet_reader.h"

namespace QOR::Base {

class CQORFileImpl {
 public:
  CQORFileImpl() = default;
  virtual ~CQORFileImpl() = default;
  CQORFileImpl(const CQORFileImpl&) = delete;
  CQORFileImpl& operator=(const CQORFileImpl&) = delete;

  // Writes the bytes of one message. False, with the reason in LastSystemError, if not all were written.
  virtual bool WriteBytes(std::span<const std::uint8_t> bytes);
  // Handles one stored message, whose header is parsed.
  virtual void LoadRecord(CQORPacketReader& reader) = 0;

  // Folder, base name and extension; with a date, "_yyyymmdd" follows the base name.
  void SetName(std::filesystem::path folder, std::filesystem::path baseName, std::filesystem::path extension = ".ada");
  void SetDate(const std::tm& date);
  const std::filesystem::path& FullPath() const noexcept { return Path; }
  // The name of a backup at that moment: "_yyyymmdd_hhmm" follows the base name.
  std::filesystem::path BackupPath(const std::filesystem::path& backupFolder, const std::tm& moment) const;

  // Opens or creates the file for reading and writing, at its start. Other programs may read it meanwhile.
  std::error_code Open();
  // False if buffered bytes could not be written.
  bool Close() noexcept;
  // Passes every message to LoadRecord up to the first one that is not whole, and seeks there: the next write follows
  // the last whole message, and first reports and cuts off the rest. Returns the size of the messages. An exception in
  // LoadRecord loses only its message.
  std::uint64_t Load();
  std::uint64_t BytesLoaded() const noexcept { return LoadedCount; }
  // Moves the file into the folder, which is created, and opens a new one under its name. If it cannot be written or
  // moved, for instance because that backup exists, this is reported, the old file stays in use, and the result is
  // false.
  bool Backup(const std::filesystem::path& backupFolder, const std::tm& moment);
  // Writes buffered bytes. False, with the reason in LastSystemError, on failure.
  bool Flush() noexcept;

 private:
  struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
  };
  std::vector<std::uint8_t> ReadAll();
  bool CutRest() noexcept;
  void MakePath();

  bool Dated = false;
  std::filesystem::path Folder;
  std::filesystem::path BaseName;
  std::filesystem::path Extension = ".ada";
  std::string DateText;
  std::filesystem::path Path;
  std::uint64_t LoadedCount = 0;
  std::uint64_t RestCount = 0;  // bytes after those loaded, until the next write
  std::unique_ptr<std::FILE, CloseFile> File;
  QOR::Thread::CQORLock Section;
};

}  // namespace QOR::Base
