// Files of wire messages: MessageFile reads one message at a time, MessageRecorder writes a day as messages, plain or
// compressed, and TradeRecorder its trades in the form of the trade store.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "terminal/common/errors.h"
#include "trade_data/record_files/ada_write_async.h"
#include "trade_data/records/trade_impl.h"

// FileBytes: reads a file once through a window, so that a day of any length takes the same memory.

// The window starts at the first byte that is not dropped and has at least the size asked for, unless the file ends
// before. Throws TerminalError if the system cannot open or read the file. Reads blocks of a megabyte behind the rest
// of the window, which moves to the front first.
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

// A whole message with its header, and its place in the file. The bytes may be changed.
struct RawMessage {
  std::uint8_t* Data = nullptr;
  std::uint16_t Size = 0;
  std::uint64_t Offset = 0;
};

// Gives every whole message in order, whatever stands between, and reports the rest once with its offset. Throws
// TerminalError if the file cannot be read.
//
// A header with an impossible length, or whose body holds the next header while none stands at its end, is a message
// that was cut: the search goes on one byte after its begin, so that a damaged length costs one message.
class MessageFile {
 public:
  MessageFile(std::filesystem::path path, BadLineReport& badLines);

  // The frame is valid until the next call; false at the end of the file.
  bool Next(RawMessage& frame);
  // Reports the last frame.
  void Report(const std::string& reason) { BadLines.AtByte(Bytes.Path(), Frame.Offset, reason); }

 private:
  bool FindHeader();
  void ReportGarbage();
  bool TakeFrame();
  // Reports the message at the window and drops that many bytes.
  void RefuseFrame(const std::string& reason, std::size_t size);

  FileBytes Bytes;
  BadLineReport& BadLines;
  std::vector<std::uint8_t> Copy;
  RawMessage Frame;
  std::uint64_t GarbageSize = 0;
  bool GarbageTold = false;  // what follows belongs to a cut message that has been reported
};

// The offset of the first whole header; npos for none.
std::size_t FindMessageHeader(std::string_view bytes, std::size_t from) noexcept;

// Copies a message after ParseHeader, with the number in its bytes, into an empty writer, and finishes it. False if it
// exceeds the writer's limit.
bool CopyMessage(const CQORPacketReader& message, CQORPacketWriter& writer);

class MessageRecorder {
 public:
  // mode is the mode of the written messages. Throws TerminalError if the file cannot be made.
  MessageRecorder(std::filesystem::path path, std::uint16_t mode);

  // Writes a message after ParseHeader, with the number in its bytes. False if it exceeds the writer's limit. Throws
  // TerminalError if the write fails.
  bool Write(const CQORPacketReader& message);
  // To be called behind the last message: what the system still holds back is written, or the failure thrown.
  void Close();

 private:
  std::filesystem::path FilePath;
  std::uint16_t Mode;
  std::ofstream Stream;
};

// True for the extension .ada in any case: a record file, which holds trades in the form of the trade store.
bool IsRecordFile(const std::filesystem::path& file);

class TradeRecorder {
 public:
  // Replaces the file; mode is the mode of its messages. Throws TerminalError if the file cannot be made.
  TradeRecorder(std::filesystem::path path, std::uint16_t mode);

  // Writes the trade of a message 8111 or 9101 after ParseHeader, under its number; false for others. Moves the reader.
  // Failed writes throw TerminalError here or in Close.
  bool Write(CQORPacketReader& message);
  // To be called behind the last message: waits until all is written, or throws the failure.
  void Close();

 private:
  [[noreturn]] void ThrowFailure();

  std::filesystem::path FilePath;
  std::uint16_t Mode;
  CQORTradeImpl Trades;
  std::unique_ptr<QOR::Base::CQORADAWriteAsync> Writer;  // ends before Trades
};
