// MessageFile: a file of wire messages one after the other, one frame at a time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/common/errors.h"

// FileBytes: a file read from its begin to its end through a window, so that a day of any length takes the same
// memory.

// Promises: every byte is read once; the window starts at the first byte not yet dropped and has at least the size
// asked for unless the file ends before. Throws TerminalError with file and reason when the system refuses to open or
// read. Reads blocks of a megabyte behind what is left of the window, which is moved to the front first.
class FileBytes {
 public:
  explicit FileBytes(std::filesystem::path path);

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

// One whole message, header included, and its place in the file. The bytes may be changed.
struct WireFrame {
  std::uint8_t* Data = nullptr;
  std::uint16_t Size = 0;
  std::uint64_t Offset = 0;
};

// Promises: every message that is whole is given, in order, whatever stands between; what is not whole is reported once
// with its offset. Throws TerminalError when the file cannot be read.
//
// A header that asks for more than a message can have, or for more than the file has left, or whose body holds the next
// header while none stands at its end, is taken for a message that was cut: the search goes on one byte behind its
// begin, so that a damaged length costs one message and not the rest of the file.
class MessageFile {
 public:
  MessageFile(std::filesystem::path path, BadLineReport& badLines);

  // The frame lives until the next call; false at the end of the file.
  bool Next(WireFrame& frame);
  // Reports the frame given last.
  void Report(const std::string& reason) { BadLines.AtByte(Bytes.Path(), Frame.Offset, reason); }

 private:
  bool FindHeader();
  void ReportGarbage();
  bool TakeFrame();
  // Reports the message at the window and drops so much of it.
  void RefuseFrame(const std::string& reason, std::size_t size);

  FileBytes Bytes;
  BadLineReport& BadLines;
  std::vector<std::uint8_t> Copy;
  WireFrame Frame;
  std::uint64_t GarbageSize = 0;
  bool GarbageTold = false;  // what follows belongs to a cut message that has been reported
};

// Where the first header stands in the bytes; npos when there is none that is whole.
std::size_t FindMessageHeader(std::string_view bytes, std::size_t from) noexcept;
