// Trade messages for benchmarks: 450 bytes, 44 fields, each of a different trade, consecutive in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host_link/messages/packet_reader.h"
#include "trade_data/records/trade_record.h"

inline constexpr std::size_t kSampleMessageSize = 450;
inline constexpr std::size_t kSampleFieldCount = 44;

// The record of message i.
TradeRecord SampleRecord(std::uint32_t i);

// Messages 0 to count - 1 with that message number. The same arguments return the same memory.
const std::vector<std::uint8_t>& SampleMessages(std::size_t count, std::uint16_t messageNumber);

// Puts a reader where the terminal passes it on: header parsed, after tag 10002.
inline void OpenSample(CQORPacketReader& reader, std::uint16_t messageNumber) noexcept {
  reader.MessageNumber = messageNumber;
  reader.Tag = 10002;
  reader.Cursor = kHeaderSize + 5;
}
