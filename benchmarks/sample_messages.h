// Trade messages to measure with: 450 bytes, 44 fields, every one a different trade, one behind the other in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host_link/messages/packet_reader.h"
#include "trade_data/records/trade_record.h"

inline constexpr std::size_t kSampleMessageSize = 450;
inline constexpr std::size_t kSampleFieldCount = 44;

// The record that message i carries.
TradeRecord SampleRecord(std::uint32_t i);

// Messages 0 to count - 1 with that message number. The same count and number give the same memory again.
const std::vector<std::uint8_t>& SampleMessages(std::size_t count, std::uint16_t messageNumber);

// A reader that stands where the terminal hands it over: header parsed, behind tag 10002.
inline void OpenSample(CQORPacketReader& reader, std::uint16_t messageNumber) noexcept {
  reader.MessageNumber = messageNumber;
  reader.Tag = 10002;
  reader.Cursor = kHeaderSize + 5;
}
