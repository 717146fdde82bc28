// FieldCursor: a place in the bytes of a message and the steps from field to field. CQORPacketReader offers these steps
// to callers; decoders run on a copy of it, which the compiler keeps in registers while they write into records. Reads
// only the bytes given. One thread at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "host_link/message_header.h"
#include "host_link/skip_rule.h"

struct FieldCursor {
  const std::uint8_t* Data;
  std::size_t Cursor;
  std::size_t End;

  // Finds the next field: any bytes before its mark are passed over. False at the end of the message, behind a mark
  // that has no room for its tag.
  bool NextTag(std::uint16_t& tag) noexcept {
    do {
      if (Cursor >= End) return false;
    } while (Data[Cursor++] != kFieldMark);
    return ReadValue(&tag, sizeof tag);
  }

  // Steps over a value of that tag; false where it reaches past the end.
  bool SkipValue(std::uint16_t tag) noexcept {
    std::uint16_t width = ValueWidth(tag);
    if (width == kCountedWidth) {
      width = 0;
      ReadValue(&width, sizeof width);
    }
    return Drop(width);
  }

  // Steps over that many bytes; false, with nothing changed, where they reach past the end.
  bool Drop(std::size_t width) noexcept {
    if (Cursor + width > End) return false;
    Cursor += width;
    return true;
  }

  // Copies a counted value of at most limit bytes (0: all of it) and, where there is room, a NUL behind it.
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

  // Copies a value of that width to any place and advances; false, with nothing changed, when it reaches past the end.
  bool ReadValue(void* place, std::size_t width) noexcept {
    if (Cursor + width > End) return false;
    std::memcpy(place, Data + Cursor, width);
    Cursor += width;
    return true;
  }
};
