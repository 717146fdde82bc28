// GrowingFile: a file that one process appends to while others read it, at any place and without a position.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

// Every function returns false on failure, with the reason in LastSystemError.
class GrowingFile {
 public:
  GrowingFile() = default;
  ~GrowingFile() { Close(); }
  GrowingFile(const GrowingFile&) = delete;
  GrowingFile& operator=(const GrowingFile&) = delete;

  // For reading. Other programs may append to the file and rename it meanwhile.
  bool OpenToRead(const std::filesystem::path& file) noexcept;
  // For writing, too. A missing file is created; on Linux only its owner may read it. The file is held until it is
  // closed or the process ends, however that happens: nobody else can open it to write. isHeld tells that somebody has.
  //
  // Linux: also ignores SIGXFSZ in the whole process unless that has a handler, so that a write beyond the limit of the
  // file's size fails and does not end the process.
  bool OpenToWrite(const std::filesystem::path& file, bool& isHeld) noexcept;
  void Close() noexcept;

  bool Size(std::uint64_t& size) const noexcept;
  // Reads what there is from that place, at most size bytes; got is less than that at the end of the file.
  bool Read(std::uint64_t place, void* bytes, std::size_t size, std::size_t& got) const noexcept;
  // Writes all bytes at that place, in one call of the system where that takes them all. On failure some may be there.
  bool Write(std::uint64_t place, std::string_view bytes) noexcept;
  // Ends the file at that size.
  bool Cut(std::uint64_t size) noexcept;

 private:
  std::intptr_t Handle = -1;
};
