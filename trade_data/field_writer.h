// The way of a record's fields onto the wire, by the tables that decode them (host_link/wire_fields.h). Not the order
// of the fields: each record's encoder has its own. Pure; any thread.
#pragma once

#include "host_link/packet_writer.h"
#include "host_link/wire_fields.h"

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
