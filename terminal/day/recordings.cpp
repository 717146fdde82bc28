#include "terminal/day/recordings.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "host_link/messages/message_header.h"
#include "host_link/messages/packet_writer.h"
#include "platform/faults.h"
#include "terminal/common/errors.h"

namespace {

// The field of the message number is first in every body and as long as the head of a counted field.
constexpr std::uint16_t kNumberFieldSize = 5;

// Copies the body as one counted field; the field of the number then overwrites its head.
bool CopyBody(const CQORPacketReader& message, CQORPacketWriter& writer) {
  const std::uint8_t* body = message.Data + message.Cursor - kNumberFieldSize;
  if (!writer.AddBytes(10002, message.Data + message.Cursor, static_cast<std::uint16_t>(message.End - message.Cursor)))
    return false;
  std::memcpy(writer.Buffer + kHeaderSize, body, kNumberFieldSize);
  writer.Finish();
  return writer.GetSize() != 0;
}

}  // namespace

MessageRecorder::MessageRecorder(std::filesystem::path path, std::uint16_t mode)
    : FilePath(std::move(path)), Mode(mode) {
  errno = 0;
  Stream.open(FilePath, std::ios::binary | std::ios::trunc);
  if (!Stream) ThrowFileError(FilePath, "cannot be written", errno);
}

bool MessageRecorder::Write(const CQORPacketReader& message) {
  CQORPacketWriter writer(Mode);
  if (!CopyBody(message, writer)) return false;
  errno = 0;
  Stream.write(reinterpret_cast<const char*>(writer.GetData()), writer.GetSize());
  if (!Stream) ThrowFileError(FilePath, "cannot be written", errno);
  return true;
}

void MessageRecorder::Close() {
  errno = 0;
  Stream.close();
  if (!Stream) ThrowFileError(FilePath, "cannot be written", errno);
}

namespace {

// Intentional: empties the file instead of replacing it; links to it stay valid.
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

TradeRecorder::TradeRecorder(std::filesystem::path path, std::uint16_t mode) : FilePath(std::move(path)), Mode(mode) {
  EmptyFile(FilePath);
  Trades.SetName(FilePath.parent_path(), FilePath.stem(), FilePath.extension());
  if (const std::error_code error = Trades.Open(); error) ThrowFileError(FilePath, "cannot be written", error);
  Writer = std::make_unique<QOR::Base::CQORADAWriteAsync>(Trades, Trades.BufferStore());
  Trades.SetWriterHandle(Writer.get());
}

bool TradeRecorder::Write(CQORPacketReader& message) {
  const std::uint16_t number = message.MessageNumber;
  if (number != 8111 && number != 9101) return false;
  TradeRecord record{};
  Trades.DecodeMessage(message, record);
  if (!Trades.SaveRecord(record, number, Mode)) ThrowFailure();
  return true;
}

void TradeRecorder::Close() {
  if (!Writer->Close()) ThrowFailure();
  if (!Trades.Close())
    ThrowFileError(FilePath, "cannot be written",
                   std::error_code(static_cast<int>(LastSystemError()), std::system_category()));
}

void TradeRecorder::ThrowFailure() {
  Writer->Close();
  ThrowFileError(FilePath, "cannot be written",
                 std::error_code(static_cast<int>(Writer->Error()), std::system_category()));
}
