// CMessageFile: a file of wire messages one after the other, one frame at a time. Not what is inside a frame: that is
// for CQORPacketReader. One thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/bad_lines.h"
#include "terminal/file_bytes.h"

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
class CMessageFile {
 public:
  CMessageFile(std::filesystem::path path, CBadLines& badLines);

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

  CFileBytes Bytes;
  CBadLines& BadLines;
  std::vector<std::uint8_t> Copy;
  WireFrame Frame;
  std::uint64_t GarbageSize = 0;
  bool GarbageTold = false;  // what follows belongs to a cut message that has been reported
};

// Where the first header stands in the bytes; npos when there is none that is whole.
std::size_t FindMessageHeader(std::string_view bytes, std::size_t from) noexcept;
