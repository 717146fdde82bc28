// CQORPacketReader walks the fields of one received message. Terminal and plug-in pass it by address, so the order and
// offsets of its members are fixed.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "host_link/messages/message_header.h"

// A place in the bytes of a message and the steps from field to field. Decoders walk on a copy of it, which the
// compiler keeps in registers while they write into records. Reads only the given bytes.
struct FieldCursor {
  const std::uint8_t* Data;
  std::size_t Cursor;
  std::size_t End;

  // Finds the next field; bytes before its mark are ignored. False at the end of the message, and after a mark without
  // room for a tag.
  bool NextTag(std::uint16_t& tag) noexcept {
    do {
      if (Cursor >= End) return false;
    } while (Data[Cursor++] != kFieldMark);
    return ReadValue(&tag, sizeof tag);
  }

  // Skips a value of that tag; false if it reaches past the end.
  bool SkipValue(std::uint16_t tag) noexcept {
    std::uint16_t width = ValueWidth(tag);
    if (width == kCountedWidth) {
      width = 0;
      ReadValue(&width, sizeof width);
    }
    return Drop(width);
  }

  // Skips that many bytes; false, with nothing changed, if they reach past the end.
  bool Drop(std::size_t width) noexcept {
    if (Cursor + width > End) return false;
    Cursor += width;
    return true;
  }

  // Copies a counted value of at most limit bytes (0: all of it) and a NUL, if there is room.
  bool ReadText(char* destination, std::uint16_t limit) noexcept {
    std::uint16_t count;
    if (!ReadValue(&count, sizeof count)) return false;
    const std::uint16_t taken = limit == 0 ? count : std::min(count, limit);
    if (Cursor + taken > End) return false;
    std::memcpy(destination, Data + Cursor, taken);
    Cursor += taken;
    if (limit > taken) destination[taken] = '\0';
    return true;
  }

  // Copies a value of that width and advances; false, with nothing changed, if it reaches past the end.
  bool ReadValue(void* place, std::size_t width) noexcept {
    if (Cursor + width > End) return false;
    std::memcpy(place, Data + Cursor, width);
    Cursor += width;
    return true;
  }
};

// No operation throws or reads outside Data[0, End), whatever the bytes. A plain message is read in place without an
// allocation. Bytes between fields are ignored, so a damaged field loses itself and at most its neighbour.
class CQORPacketReader {
 public:
  CQORPacketReader(const std::uint8_t* data, std::uint16_t length) noexcept : Data(data), End(length) {}
  ~CQORPacketReader();
  CQORPacketReader(const CQORPacketReader&) = delete;
  CQORPacketReader& operator=(const CQORPacketReader&) = delete;

  // Decodes the raw bytes Data[0, End): skips garbage before the header, undoes the mode, reads the message number.
  // False without a whole message that begins with its number; needed is then the size for the next attempt. In both
  // cases consumed is the count of bytes that are not needed any longer.
  bool ParseHeader(std::uint16_t& needed, std::uint16_t& consumed) noexcept;

  // Finds the next field and stores its tag; false at the end of the message.
  bool NextTag() noexcept {
    FieldCursor place = Place();
    const bool found = place.NextTag(Tag);
    GoTo(place);
    return found;
  }

  // Skips the value of the current tag by the skip rule; false if it reaches past the end.
  bool SkipValue() noexcept {
    FieldCursor place = Place();
    const bool skipped = place.SkipValue(Tag);
    GoTo(place);
    return skipped;
  }

  // Copies a counted value of at most limit bytes (0: all of it) and a NUL, if there is room. Requires limit + 1 zeroed
  // bytes. Intentional: the rest of a longer value is not skipped, and NextTag finds fields in it; the format says so.
  bool ReadText(char* destination, std::uint16_t limit) noexcept {
    FieldCursor place = Place();
    const bool read = place.ReadText(destination, limit);
    GoTo(place);
    return read;
  }

  // Each copies the value and advances; false, with nothing changed, if it reaches past the end.
  bool ReadU8(std::uint8_t& value) noexcept { return ReadValue(value); }
  bool ReadU16(std::uint16_t& value) noexcept { return ReadValue(value); }
  bool ReadU32(std::uint32_t& value) noexcept { return ReadValue(value); }
  bool ReadU64(std::uint64_t& value) noexcept { return ReadValue(value); }
  bool ReadDouble(double& value) noexcept { return ReadValue(value); }

  // For loops over many fields, which walk on a copy of the cursor.
  FieldCursor Place() const noexcept { return {Data, Cursor, End}; }
  void GoTo(const FieldCursor& place) noexcept { Cursor = static_cast<std::uint16_t>(place.Cursor); }

  std::uint16_t Tag = 0;            // tag of the field last opened
  std::uint16_t MessageNumber = 0;  // value of tag 10002
  const std::uint8_t* Data;
  std::uint8_t* DecodedBuffer = nullptr;  // owned; array new
  std::uint16_t Mode = 0;
  std::uint16_t Cursor = 0;  // offset in Data of the next byte to read
  std::uint16_t End;         // offset in Data one past the last readable byte
  std::uint16_t DecodedLength = 0;

 private:
  template <typename Value>
  bool ReadValue(Value& value) noexcept {
    FieldCursor place = Place();
    const bool read = place.ReadValue(&value, sizeof value);
    GoTo(place);
    return read;
  }
  bool FindHeader(std::uint16_t& skipped) noexcept;
  bool DecodeBody(std::uint16_t size) noexcept;
  bool Decipher(std::uint16_t size) noexcept;
  void TakeDecoded(std::unique_ptr<std::uint8_t[]> decoded, std::uint16_t size) noexcept;
  bool Inflate() noexcept;
  bool ReadMessageNumber() noexcept;
};

static_assert(offsetof(CQORPacketReader, MessageNumber) == 2 && offsetof(CQORPacketReader, Data) == 8 &&
              offsetof(CQORPacketReader, DecodedBuffer) == 16 && offsetof(CQORPacketReader, Mode) == 24 &&
              offsetof(CQORPacketReader, Cursor) == 26 && offsetof(CQORPacketReader, End) == 28 &&
              offsetof(CQORPacketReader, DecodedLength) == 30 && sizeof(CQORPacketReader) == 32);
