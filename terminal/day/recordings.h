// Recorders write a day into a file: MessageRecorder all its messages, plain or compressed; TradeRecorder its trades in
// the form of the trade store.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>

#include "host_link/messages/packet_reader.h"
#include "trade_data/record_files/ada_write_async.h"
#include "trade_data/records/trade_impl.h"

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

// True for the extension .ada in any case.

// Whether a file of that name is a record file: by its extension .ada.
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
