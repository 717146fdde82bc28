// CFileBytes: a file read from its begin to its end through a window, so that a day of any length takes the same
// memory. Not lines (csv_file.h) and not messages (message_file.h). One thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <vector>

// Promises: every byte is read once; the window starts at the first byte not yet dropped and has at least the size
// asked for unless the file ends before. Throws TerminalError with file and reason when the system refuses to open or
// read. Reads blocks of a megabyte behind what is left of the window, which is moved to the front first.
class CFileBytes {
 public:
  explicit CFileBytes(std::filesystem::path path);

  // Valid until the next Peek; Drop leaves the bytes where they are.
  std::string_view Peek(std::size_t wanted);
  void Drop(std::size_t count) noexcept { Begin += count; }

  std::uint64_t Offset() const noexcept { return FileOffset + Begin; }  // of the window in the file
  const std::filesystem::path& Path() const noexcept { return FilePath; }

 private:
  void Fill();

  std::filesystem::path FilePath;
  std::ifstream Stream;
  std::vector<char> Block;
  std::size_t Begin = 0;
  std::size_t Filled = 0;
  std::uint64_t FileOffset = 0;  // of Block[0]
};
