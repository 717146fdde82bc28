// CRecordFile: writes the trades of a day into a record file, the form in which the trade store keeps its records. Not
// the other messages of a day: those are for message_record.h. One thread; the writing has its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "trade_data/ada_write_async.h"
#include "trade_data/trade_impl.h"

// Whether a file of that name is a record file: by its extension .ada.
bool IsRecordFile(const std::filesystem::path& file);

class CRecordFile {
 public:
  // Makes the file anew; mode is that of its messages. Throws TerminalError when the file cannot be made.
  CRecordFile(std::filesystem::path path, std::uint16_t mode);

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
