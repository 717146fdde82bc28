#include "terminal/record_file.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <utility>

#include "platform/last_error.h"
#include "terminal/terminal_error.h"

namespace {

// The file's name stays its own, so that a link goes on pointing to it.
void EmptyFile(const std::filesystem::path& file) {
  std::error_code error;
  if (std::filesystem::is_regular_file(file, error)) std::filesystem::resize_file(file, 0, error);
  if (error && error != std::errc::no_such_file_or_directory) ThrowFileError(file, "cannot be written", error);
}

}  // namespace

bool IsRecordFile(const std::filesystem::path& file) {
  std::string extension = PathText(file.extension());
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension == ".ada";
}

CRecordFile::CRecordFile(std::filesystem::path path, std::uint16_t mode) : FilePath(std::move(path)), Mode(mode) {
  EmptyFile(FilePath);
  Trades.SetName(FilePath.parent_path(), FilePath.stem(), FilePath.extension());
  if (const std::error_code error = Trades.Open(); error) ThrowFileError(FilePath, "cannot be written", error);
  Writer = std::make_unique<QOR::Base::CQORADAWriteAsync>(Trades, Trades.BufferStore());
  Trades.SetWriterHandle(Writer.get());
}

bool CRecordFile::Write(CQORPacketReader& message) {
  const std::uint16_t number = message.MessageNumber;
  if (number != 8111 && number != 9101) return false;
  TradeRecord record{};
  Trades.DecodeMessage(message, record);
  if (!Trades.SaveRecord(record, number, Mode)) ThrowFailure();
  return true;
}

void CRecordFile::Close() {
  if (!Writer->Close()) ThrowFailure();
  if (!Trades.Close())
    ThrowFileError(FilePath, "cannot be written",
                   std::error_code(static_cast<int>(LastSystemError()), std::system_category()));
}

void CRecordFile::ThrowFailure() {
  Writer->Close();
  ThrowFileError(FilePath, "cannot be written",
                 std::error_code(static_cast<int>(Writer->Error()), std::system_category()));
}
