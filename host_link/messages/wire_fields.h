// Decoding of message fields into a flat record by a table of tag, kind and place. Touches only the reader and the
// record given.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "host_link/messages/packet_reader.h"

enum class Field : std::uint8_t { U8, U16, U32, U64, Double, Text, Dropped16, Dropped32 };

// How one tag's value reaches the record. Limit is that of a text: its place has room for one byte more.
struct WireField {
  std::uint16_t Tag;
  Field Kind;
  std::uint16_t Offset;
  std::uint16_t Limit = 0;
};

constexpr std::size_t PlaceSize(const WireField& field) {
  switch (field.Kind) {
    case Field::U8:
      return 1;
    case Field::U16:
      return 2;
    case Field::U32:
      return 4;
    case Field::U64:
    case Field::Double:
      return 8;
    case Field::Text:
      return field.Limit + std::size_t{1};
    case Field::Dropped16:
    case Field::Dropped32:
      return 0;
  }
  return 0;
}

// What a table must promise: rising tags, places inside the record.
template <std::size_t Count>
constexpr bool FieldsFit(const WireField (&fields)[Count], std::size_t recordSize) {
  for (std::size_t i = 0; i < Count; ++i) {
    if (i > 0 && fields[i - 1].Tag >= fields[i].Tag) return false;
    if (fields[i].Offset + PlaceSize(fields[i]) > recordSize) return false;
  }
  return true;
}

// Promises: the row of a tag, or the row count where the table has none, in constant time.
// A multiplicative hash whose factor, found by the compiler, sends every tag of the table to a slot of its own.
template <std::size_t Count>
class FieldIndex {
 public:
  constexpr explicit FieldIndex(const WireField (&fields)[Count]) {
    for (Factor = 0x9E3779B1; !Fill(fields); Factor += 2) {
    }
  }
  constexpr std::size_t RowOf(std::uint16_t tag) const noexcept {
    const Slot slot = Slots[SlotOf(tag)];
    return slot.Tag == tag ? slot.Row : Count;
  }

 private:
  static_assert(Count < 128);
  static constexpr std::size_t kSlotBits = 9;
  struct Slot {
    std::uint16_t Tag;
    std::uint16_t Row;
  };
  constexpr std::size_t SlotOf(std::uint16_t tag) const noexcept { return (tag * Factor) >> (32 - kSlotBits); }
  constexpr bool Fill(const WireField (&fields)[Count]) {
    Slots.fill({0, Count});
    for (std::size_t i = 0; i < Count; ++i) {
      Slot& slot = Slots[SlotOf(fields[i].Tag)];
      if (slot.Row != Count) return false;
      slot = {fields[i].Tag, static_cast<std::uint16_t>(i)};
    }
    return true;
  }

  std::uint32_t Factor = 0;
  std::array<Slot, std::size_t{1} << kSlotBits> Slots{};
};

// Reads a value into its place. One that does not fit before the end is left unread, and is then searched for the next
// field; a text is cut at its limit.
inline void ReadField(FieldCursor& cursor, const WireField& field, std::uint8_t* record) noexcept {
  std::uint8_t* place = record + field.Offset;
  switch (field.Kind) {
    case Field::U8:
      cursor.ReadValue(place, 1);
      return;
    case Field::U16:
      cursor.ReadValue(place, 2);
      return;
    case Field::U32:
      cursor.ReadValue(place, 4);
      return;
    case Field::U64:
    case Field::Double:
      cursor.ReadValue(place, 8);
      return;
    case Field::Text:
      cursor.ReadText(reinterpret_cast<char*>(place), field.Limit);
      return;
    case Field::Dropped16:
      cursor.Drop(2);
      return;
    case Field::Dropped32:
      cursor.Drop(4);
      return;
  }
}

// The decoder loop: every field from the cursor to the end of the message; unknown tags are skipped.
template <std::size_t Count>
void ReadFields(CQORPacketReader& reader, const WireField (&fields)[Count], const FieldIndex<Count>& index,
                std::uint8_t* record) noexcept {
  FieldCursor cursor = reader.Place();
  std::uint16_t tag = reader.Tag;
  while (cursor.NextTag(tag)) {
    if (const std::size_t row = index.RowOf(tag); row < Count)
      ReadField(cursor, fields[row], record);
    else
      cursor.SkipValue(tag);
  }
  reader.GoTo(cursor);
  reader.Tag = tag;
}
