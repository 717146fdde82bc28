#include "terminal/message_record.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "host_link/message_header.h"
#include "host_link/packet_writer.h"
#include "terminal/terminal_error.h"

namespace {

// The field of the message number opens every body, and is as long as the head of a counted field.
constexpr std::uint16_t kNumberFieldSize = 5;

// Fills the writer with the body of the message: added as one counted field, whose head the number's field then takes.
bool CopyBody(const CQORPacketReader& message, CQORPacketWriter& writer) {
  const std::uint8_t* body = message.Data + message.Cursor - kNumberFieldSize;
  if (!writer.AddBytes(10002, message.Data + message.Cursor, static_cast<std::uint16_t>(message.End - message.Cursor)))
    return false;
  std::memcpy(writer.Buffer + kHeaderSize, body, kNumberFieldSize);
  writer.Finish();
  return writer.GetSize() != 0;
}

}  // namespace

CMessageRecord::CMessageRecord(std::filesystem::path path, std::uint16_t mode) : FilePath(std::move(path)), Mode(mode) {
  errno = 0;
  Stream.open(FilePath, std::ios::binary | std::ios::trunc);
  if (!Stream) ThrowFileError(FilePath, "cannot be written", errno);
}

bool CMessageRecord::Write(const CQORPacketReader& message) {
  CQORPacketWriter writer(Mode);
  if (!CopyBody(message, writer)) return false;
  errno = 0;
  Stream.write(reinterpret_cast<const char*>(writer.GetData()), writer.GetSize());
  if (!Stream) ThrowFileError(FilePath, "cannot be written", errno);
  return true;
}

void CMessageRecord::Close() {
  errno = 0;
  Stream.close();
  if (!Stream) ThrowFileError(FilePath, "cannot be written", errno);
}
