// CQORPacketWriter builds one wire message: construct, Add fields in order, Finish, GetData and GetSize. Terminal and
// plug-in pass it by address, so the order and offsets of its members are fixed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// A message has at most 61440 bytes; a field that does not fit is rejected whole, and shorter ones can still follow. No
// operation throws. One block of 4096 bytes that grows to the next multiple of 4096 above the need: almost every
// message is one allocation, and an Add is a copy.
class CQORPacketWriter {
 public:
  explicit CQORPacketWriter(std::uint16_t mode) noexcept;
  ~CQORPacketWriter();
  CQORPacketWriter(const CQORPacketWriter&) = delete;
  CQORPacketWriter& operator=(const CQORPacketWriter&) = delete;

  // Each returns false, with the message unchanged, if the field does not fit or memory is out.
  bool AddBytes(std::uint16_t tag, const void* bytes, std::uint16_t count) noexcept;
  // With fixed false the text up to its NUL, cut at the limit; with fixed true exactly limit bytes of the source, with
  // NULs and what follows them.
  bool AddText(std::uint16_t tag, const char* text, std::uint16_t limit, bool fixed) noexcept;
  // The characters and a NUL.
  bool AddStdString(std::uint16_t tag, const std::string& text) noexcept;
  bool AddU8(std::uint16_t tag, std::uint8_t value) noexcept;
  bool AddU16(std::uint16_t tag, std::uint16_t value) noexcept;
  bool AddU32(std::uint16_t tag, std::uint32_t value) noexcept;
  bool AddU64(std::uint16_t tag, std::uint64_t value) noexcept;
  bool AddDouble(std::uint16_t tag, double value) noexcept;
  bool AddTerminator() noexcept;

  // Seals the message: length word, then compression or cipher by the mode. A second call is a no-op if there is a
  // sealed copy.
  void Finish() noexcept;
  const std::uint8_t* GetData() const noexcept { return OutputBuffer != nullptr ? OutputBuffer : Buffer; }
  std::uint16_t GetSize() const noexcept { return OutputBuffer != nullptr ? OutputLength : Cursor; }

  std::uint32_t Capacity = 0;            // size of Buffer in bytes
  std::uint8_t* Buffer = nullptr;        // header and plain body; array new, zero-filled
  std::uint16_t OutputLength = 0;        // bytes of OutputBuffer, header included
  std::uint8_t* OutputBuffer = nullptr;  // the sealed message if it is a copy
  std::uint16_t LengthFieldOffset = 0;
  std::uint16_t Mode = 0;
  std::uint16_t Cursor = 0;  // next free byte of Buffer
  std::uint16_t HeaderSize = 0;

 private:
  bool Reserve(std::uint32_t byteCount) noexcept;
  void PutHead(std::uint16_t tag) noexcept;
  void PutBytes(const void* bytes, std::uint16_t count) noexcept;
  template <typename Value>
  bool AddValue(std::uint16_t tag, Value value) noexcept;
  void Compress() noexcept;
  void Encipher() noexcept;
};

static_assert(offsetof(CQORPacketWriter, Buffer) == 8 && offsetof(CQORPacketWriter, OutputLength) == 16 &&
              offsetof(CQORPacketWriter, OutputBuffer) == 24 && offsetof(CQORPacketWriter, LengthFieldOffset) == 32 &&
              offsetof(CQORPacketWriter, Mode) == 34 && offsetof(CQORPacketWriter, Cursor) == 36 &&
              offsetof(CQORPacketWriter, HeaderSize) == 38 && sizeof(CQORPacketWriter) == 40);
