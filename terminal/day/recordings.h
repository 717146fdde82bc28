// MessageRecorder: writes the messages of a day one after the other into a file, plain or compressed.
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
  // mode is that of the messages written. Throws TerminalError when the file cannot be made.
  MessageRecorder(std::filesystem::path path, std::uint16_t mode);

  // Writes a message whose header has been parsed, with the number that its bytes have. False for one that does not fit
  // the writer's limit; a failed write is a TerminalError.
  bool Write(const CQORPacketReader& message);
  // To be called behind the last message: what the system still holds back is written, or the failure thrown.
  void Close();

 private:
  std::filesystem::path FilePath;
  std::uint16_t Mode;
  std::ofstream Stream;
};

// TradeRecorder: writes the trades of a day into a record file, the form in which the trade store keeps its records.
// One thread; the writing has its own.

// Whether a file of that name is a record file: by its extension .ada.
bool IsRecordFile(const std::filesystem::path& file);

class TradeRecorder {
 public:
  // Makes the file anew; mode is that of its messages. Throws TerminalError when the file cannot be made.
  TradeRecorder(std::filesystem::path path, std::uint16_t mode);

  // Writes the trade of a message 8111 or 9101 whose header has been parsed, under its number; false for any other
  // message. The reader is moved. A failed write is a TerminalError, here or in Close.
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
