// Messages as tests write them down: literal bytes, made without the writer of the code under test.
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host_link/messages/packet_writer.h"

using Bytes = std::vector<std::uint8_t>;
using Numbers = std::initializer_list<std::uint16_t>;  // of messages, tags, modes: to loop over

// Pairs of hex digits, with blanks as the reader of the test likes them; what stands in single quotes is text.
inline Bytes Hex(std::string_view text) {
  Bytes bytes;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == ' ') continue;
    if (text[at] == '\'') {
      while (text.at(++at) != '\'') bytes.push_back(static_cast<std::uint8_t>(text[at]));
      continue;
    }
    std::size_t used = 0;
    bytes.push_back(static_cast<std::uint8_t>(std::stoul(std::string(text.substr(at++, 2)), &used, 16)));
    if (used != 2) throw std::invalid_argument("half a byte in " + std::string(text));
  }
  return bytes;
}

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

// The low bytes of a value as they stand on the wire.
inline Bytes Word(std::uint64_t value, std::size_t width = 2) {
  Bytes bytes;
  for (std::size_t i = 0; i < width; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  return bytes;
}

inline Bytes Part(const Bytes& bytes, std::size_t from, std::size_t to) {
  return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.begin() + static_cast<std::ptrdiff_t>(to));
}

// A header of that mode before a body as it stands on the wire.
inline Bytes Framed(const Bytes& body, std::uint16_t mode = 0) {
  return Hex("23 0100") + Word(mode) + Hex("23 1127") + Word(body.size()) + body;
}

inline Bytes BytesOf(const CQORPacketWriter& writer) {
  return Bytes(writer.GetData(), writer.GetData() + writer.GetSize());
}

// A copy in a heap block of exactly that size, so that a sanitizer sees one byte too far.
inline std::unique_ptr<std::uint8_t[]> ExactBlock(const Bytes& bytes) {
  auto block = std::make_unique<std::uint8_t[]>(bytes.size());
  std::copy(bytes.begin(), bytes.end(), block.get());
  return block;
}
