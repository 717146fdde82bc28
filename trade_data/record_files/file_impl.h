// CQORFileImpl: a file of records, kept as a plain run of wire messages with no header and no index. In the plug-in no
// such file is ever opened.
//
//   record file := message*        (message_header.h; each as EncodeRecord of the derived class makes it)
//
// Operations on the open file hold the instance's lock; names are set before it is opened.
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

  // Writes the bytes of one message; false, with the reason in LastSystemError, when not all were taken.
  virtual bool WriteBytes(std::span<const std::uint8_t> bytes);
  // Takes one stored message, whose header has been parsed.
  virtual void LoadRecord(CQORPacketReader& reader) = 0;

  // The file's name: folder, base name and extension; with a date "_yyyymmdd" behind the base name.
  void SetName(std::filesystem::path folder, std::filesystem::path baseName, std::filesystem::path extension = ".ada");
  void SetDate(const std::tm& date);
  const std::filesystem::path& FullPath() const noexcept { return Path; }
  // The name of a backup made at that moment: "_yyyymmdd_hhmm" behind the base name.
  std::filesystem::path BackupPath(const std::filesystem::path& backupFolder, const std::tm& moment) const;

  // Opens the file for reading and writing, at its start; it is made where there is none. Other programs may read it
  // meanwhile. The system's reason, or none.
  std::error_code Open();
  // False when what was still held back could not be written.
  bool Close() noexcept;
  // Hands every message of the file to LoadRecord, up to the first place where none stands whole, and goes there: what
  // is written next follows the last whole message, and takes the place of all that stands behind it, which the first
  // write reports and cuts off. The bytes that the messages took. An exception of LoadRecord costs its message.
  std::uint64_t Load();
  std::uint64_t BytesLoaded() const noexcept { return LoadedCount; }
  // Moves the file into the folder, which is made, and opens a fresh one under its name. When it cannot be written to
  // its end or moved, an earlier backup of that name among the reasons, that is reported and the old one goes on being
  // used. False when something failed.
  bool Backup(const std::filesystem::path& backupFolder, const std::tm& moment);
  // Sends what is held back to the system; false, with the reason in LastSystemError, when it was not taken.
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
  std::uint64_t RestCount = 0;  // bytes behind those loaded, until something is written
  std::unique_ptr<std::FILE, CloseFile> File;
  QOR::Thread::CQORLock Section;
};

}  // namespace QOR::Base
