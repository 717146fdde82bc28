#include "host_link/messages/packet_writer.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "host_link/messages/body_coding.h"
#include "host_link/messages/message_header.h"

namespace {

constexpr std::uint32_t kBlockStep = 4096;
constexpr std::uint32_t kLargestBlock = 65535;
constexpr std::uint32_t kLargestCompressed = std::numeric_limits<std::uint32_t>::max();  // any body gets its room
constexpr std::uint16_t kFieldHeadSize = 3;                                              // mark and tag
constexpr std::uint16_t kCountSize = 2;

std::uint8_t* NewZeroedBlock(std::size_t size) noexcept {
  return new (std::nothrow) std::uint8_t[size]();
}

}  // namespace

CQORPacketWriter::CQORPacketWriter(std::uint16_t mode) noexcept : Buffer(NewZeroedBlock(kBlockStep)) {
  if (Buffer == nullptr) return;
  Capacity = kBlockStep;
  Mode = mode;
  LengthFieldOffset = kLengthOffset;
  HeaderSize = kHeaderSize;
  Cursor = kHeaderSize;
  Buffer[0] = kFieldMark;
  StoreValue(Buffer + kProtocolOffset, kProtocolWord);
  StoreValue(Buffer + kModeOffset, mode);
  Buffer[kSecondMarkOffset] = kFieldMark;
  StoreValue(Buffer + kLengthTagOffset, kLengthTag);
}

CQORPacketWriter::~CQORPacketWriter() {
  delete[] Buffer;
  delete[] OutputBuffer;
}

bool CQORPacketWriter::Reserve(std::uint32_t byteCount) noexcept {
  const std::uint32_t needed = Cursor + byteCount;
  if (Capacity >= needed) return true;
  const std::uint32_t grown = (needed / kBlockStep + 1) * kBlockStep;
  if (grown > kLargestBlock) return false;
  std::uint8_t* block = NewZeroedBlock(grown);
  if (block == nullptr) return false;
  if (Cursor != 0) std::memcpy(block, Buffer, Cursor);
  delete[] Buffer;
  Buffer = block;
  Capacity = grown;
  return true;
}

void CQORPacketWriter::PutHead(std::uint16_t tag) noexcept {
  Buffer[Cursor] = kFieldMark;
  StoreValue(Buffer + Cursor + 1, tag);
  Cursor = static_cast<std::uint16_t>(Cursor + kFieldHeadSize);
}

void CQORPacketWriter::PutBytes(const void* bytes, std::uint16_t count) noexcept {
  if (count != 0) std::memcpy(Buffer + Cursor, bytes, count);
  Cursor = static_cast<std::uint16_t>(Cursor + count);
}

template <typename Value>
bool CQORPacketWriter::AddValue(std::uint16_t tag, Value value) noexcept {
  if (!Reserve(kFieldHeadSize + sizeof value)) return false;
  PutHead(tag);
  PutBytes(&value, sizeof value);
  return true;
}

bool CQORPacketWriter::AddBytes(std::uint16_t tag, const void* bytes, std::uint16_t count) noexcept {
  if (!Reserve(std::uint32_t{kFieldHeadSize} + kCountSize + count)) return false;
  PutHead(tag);
  PutBytes(&count, sizeof count);
  PutBytes(bytes, count);
  return true;
}

bool CQORPacketWriter::AddText(std::uint16_t tag, const char* text, std::uint16_t limit, bool fixed) noexcept {
  const std::size_t count = fixed ? limit : static_cast<std::size_t>(std::find(text, text + limit, '\0') - text);
  return AddBytes(tag, text, static_cast<std::uint16_t>(count));
}

bool CQORPacketWriter::AddStdString(std::uint16_t tag, const std::string& text) noexcept {
  if (text.size() >= kLargestBlock) return false;
  return AddBytes(tag, text.c_str(), static_cast<std::uint16_t>(text.size() + 1));
}

bool CQORPacketWriter::AddU8(std::uint16_t tag, std::uint8_t value) noexcept {
  return AddValue(tag, value);
}
bool CQORPacketWriter::AddU16(std::uint16_t tag, std::uint16_t value) noexcept {
  return AddValue(tag, value);
}
bool CQORPacketWriter::AddU32(std::uint16_t tag, std::uint32_t value) noexcept {
  return AddValue(tag, value);
}
bool CQORPacketWriter::AddU64(std::uint16_t tag, std::uint64_t value) noexcept {
  return AddValue(tag, value);
}
bool CQORPacketWriter::AddDouble(std::uint16_t tag, double value) noexcept {
  return AddValue(tag, value);
}

bool CQORPacketWriter::AddTerminator() noexcept {
  if (!Reserve(kFieldHeadSize)) return false;
  PutHead(kSectionTerminator);
  return true;
}

void CQORPacketWriter::Finish() noexcept {
  // Without a header (its allocation failed) there is no length word.
  if (OutputBuffer != nullptr || HeaderSize == 0) return;
  StoreValue(Buffer + LengthFieldOffset, static_cast<std::uint16_t>(Cursor - HeaderSize));
  if (Mode == kModeCompressed) Compress();
  if (Mode == kModeEnciphered) Encipher();
}

// A body that cannot be compressed leaves OutputBuffer set with OutputLength 0: the message is empty then. Only a zlib
// that does not start at all sends the message plain.
void CQORPacketWriter::Compress() noexcept {
  ZlibBlock sealed(Cursor);
  if (sealed.Bytes == nullptr) return;
  z_stream stream{};
  if (deflateInit(&stream, Z_DEFAULT_COMPRESSION) != Z_OK) {
    Mode = kModePlain;
    StoreValue(Buffer + kModeOffset, Mode);
    return;
  }
  stream.next_in = Buffer + kHeaderSize;
  stream.avail_in = Cursor - std::uint32_t{kHeaderSize};
  const bool compressed = sealed.Run(deflate, stream, kHeaderSize, Capacity, kLargestCompressed);
  deflateEnd(&stream);
  OutputBuffer = sealed.Bytes.release();
  if (!compressed) return;
  OutputLength = static_cast<std::uint16_t>(stream.total_out + kHeaderSize);
  std::memcpy(OutputBuffer, Buffer, kHeaderSize);
  StoreValue(OutputBuffer + kLengthOffset, static_cast<std::uint16_t>(OutputLength - kHeaderSize));
}

// Intentional: without a key the copy goes out plain under a header that says 2; a reader without a key refuses it.
void CQORPacketWriter::Encipher() noexcept {
  if (Cursor == HeaderSize) return;
  OutputBuffer = NewZeroedBlock(Cursor);
  if (OutputBuffer == nullptr) return;
  OutputLength = Cursor;
  std::memcpy(OutputBuffer, Buffer, Cursor);
  if (CipherKeyHolder != nullptr)
    ApplyCipher(*CipherKeyHolder, OutputBuffer + kHeaderSize, std::uint32_t{OutputLength} - kHeaderSize);
}
