// Message fields to and from a flat record by a table of tag, kind and place. Every decoder is such a table and one
// call of ReadFields.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"

enum class Field : std::uint8_t { U8, U16, U32, U64, Double, Text, Dropped16, Dropped32 };

// Where one tag's value goes. Limit is the longest text; its place has room for one byte more.
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

// What every table is checked for: rising tags, places inside the record.
template <std::size_t Count>
constexpr bool FieldsFit(const WireField (&fields)[Count], std::size_t recordSize) {
  for (std::size_t i = 0; i < Count; ++i) {
    if (i > 0 && fields[i - 1].Tag >= fields[i].Tag) return false;
    if (fields[i].Offset + PlaceSize(fields[i]) > recordSize) return false;
  }
  return true;
}

// RowOf is O(1): the row of a tag, or the row count if the table does not have it. A multiplicative hash; the compiler
// finds a factor that gives every tag a slot of its own.
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

// Reads a value into its place. A value that reaches past the end stays unread: the next field is searched for inside
// it. A text is cut at its limit.
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

// Where a section ends, and what happens to a value whose tag the table does not have.
struct SectionRules {
  bool EndsAtTerminator;  // otherwise only with the message
  bool SkipsUnknown;      // otherwise the next field is searched for inside the value
};
inline constexpr SectionRules kWholeMessage{false, true};

// Reads the fields of a section from the reader's cursor into a record. True at the section's terminator, false at the
// end of the message.
template <SectionRules kRules = kWholeMessage, std::size_t Count>
bool ReadFields(CQORPacketReader& reader, const WireField (&fields)[Count], const FieldIndex<Count>& index,
                void* record) noexcept {
  FieldCursor cursor = reader.Place();
  std::uint16_t tag = reader.Tag;
  bool terminated = false;
  while (!terminated && cursor.NextTag(tag)) {
    if constexpr (kRules.EndsAtTerminator) terminated = tag == kSectionTerminator;
    if (const std::size_t row = index.RowOf(tag); row < Count)
      ReadField(cursor, fields[row], static_cast<std::uint8_t*>(record));
    else if constexpr (kRules.SkipsUnknown)
      cursor.SkipValue(tag);
  }
  reader.GoTo(cursor);
  reader.Tag = tag;
  return terminated;
}

// Adds the field as the record has it; a text at its own length or, with fixed true, its whole limit. A field that the
// record does not keep adds nothing.
inline void AddField(CQORPacketWriter& writer, const WireField& field, const std::uint8_t* record,
                     bool fixed) noexcept {
  const std::uint8_t* place = record + field.Offset;
  switch (field.Kind) {
    case Field::U8:
      writer.AddU8(field.Tag, *place);
      return;
    case Field::U16:
      writer.AddU16(field.Tag, LoadValue<std::uint16_t>(place));
      return;
    case Field::U32:
      writer.AddU32(field.Tag, LoadValue<std::uint32_t>(place));
      return;
    case Field::U64:
      writer.AddU64(field.Tag, LoadValue<std::uint64_t>(place));
      return;
    case Field::Double:
      writer.AddDouble(field.Tag, LoadValue<double>(place));
      return;
    case Field::Text:
      writer.AddText(field.Tag, reinterpret_cast<const char*>(place), field.Limit, fixed);
      return;
    case Field::Dropped16:
    case Field::Dropped32:
      return;
  }
}
