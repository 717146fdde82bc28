#include "host_link/messages/packet_reader.h"

#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "host_link/messages/body_coding.h"
#include "host_link/messages/message_header.h"

namespace {

constexpr std::uint16_t kMessageNumberTag = 10002;
constexpr std::uint32_t kLargestBody = 65535;

bool IsHeader(const std::uint8_t* data) noexcept {
  return LoadValue<std::uint16_t>(data + kProtocolOffset) == kProtocolWord &&
         LoadValue<std::uint16_t>(data + kLengthTagOffset) == kLengthTag && data[0] == kFieldMark &&
         data[kSecondMarkOffset] == kFieldMark;
}

}  // namespace

CQORPacketReader::~CQORPacketReader() {
  delete[] DecodedBuffer;
}

bool CQORPacketReader::ParseHeader(std::uint16_t& needed, std::uint16_t& consumed) noexcept {
  consumed = 0;
  needed = kHeaderSize;
  Cursor = kHeaderSize;
  std::uint16_t skipped = 0;
  const bool found = FindHeader(skipped);
  consumed = skipped;
  if (!found) return false;
  Mode = LoadValue<std::uint16_t>(Data + kModeOffset);
  const std::uint32_t size = std::uint32_t{LoadValue<std::uint16_t>(Data + kLengthOffset)} + kHeaderSize;
  if (size > End) {
    needed = static_cast<std::uint16_t>(std::min<std::uint32_t>(size, std::numeric_limits<std::uint16_t>::max()));
    return false;
  }
  consumed = static_cast<std::uint16_t>(skipped + size);
  End = static_cast<std::uint16_t>(size);
  return DecodeBody(End) && ReadMessageNumber();
}

bool CQORPacketReader::FindHeader(std::uint16_t& skipped) noexcept {
  for (; End >= kHeaderSize; ++Data, --End, ++skipped)
    if (IsHeader(Data)) return true;
  return false;
}

bool CQORPacketReader::DecodeBody(std::uint16_t size) noexcept {
  switch (Mode) {
    case kModePlain:
      return true;
    case kModeCompressed:
      Data += kHeaderSize;
      // A body that cannot be inflated is searched as it is, from its tenth byte to its end.
      if (!Inflate()) End = static_cast<std::uint16_t>(End - kHeaderSize);
      return true;
    case kModeEnciphered:
    case kModeEncipheredByReader:
      return Decipher(size);
  }
  return false;
}

// ParseHeader may run again on a message inside a message: Data then points into the old buffer, which is freed only
// after the new one is filled.
void CQORPacketReader::TakeDecoded(std::unique_ptr<std::uint8_t[]> decoded, std::uint16_t size) noexcept {
  delete[] DecodedBuffer;
  Data = DecodedBuffer = decoded.release();
  DecodedLength = size;
}

bool CQORPacketReader::Decipher(std::uint16_t size) noexcept {
  if (CipherKeyHolder == nullptr) return false;
  std::unique_ptr<std::uint8_t[]> decoded(new (std::nothrow) std::uint8_t[size]);
  if (decoded == nullptr) return false;
  std::memcpy(decoded.get(), Data, size);
  ApplyCipher(*CipherKeyHolder, decoded.get() + kHeaderSize, std::uint32_t{size} - kHeaderSize);
  TakeDecoded(std::move(decoded), size);
  return true;
}

// Data is at the body, End is still the size of the whole message. Growing stops as soon as the body is too large, so a
// small message cannot claim much memory or time.
bool CQORPacketReader::Inflate() noexcept {
  ZlibBlock decoded(2U * End);
  if (decoded.Bytes == nullptr) return false;
  z_stream stream{};
  stream.next_in = const_cast<std::uint8_t*>(Data);
  stream.avail_in = End - std::uint32_t{kHeaderSize};
  if (inflateInit(&stream) != Z_OK) return false;
  const std::unique_ptr<z_stream, int (*)(z_stream*)> release(&stream, inflateEnd);
  if (!decoded.Run(inflate, stream, 0, End, kLargestBody)) return false;
  if (stream.total_out > kLargestBody) return false;
  Cursor = 0;
  End = static_cast<std::uint16_t>(stream.total_out);
  TakeDecoded(std::move(decoded.Bytes), End);
  return true;
}

// The first field must be the message number; without room for its value the number stays.
bool CQORPacketReader::ReadMessageNumber() noexcept {
  if (!NextTag() || Tag != kMessageNumberTag) return false;
  ReadU16(MessageNumber);
  return true;
}
