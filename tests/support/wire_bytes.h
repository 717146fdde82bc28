// Messages as tests write them: by the layout of the format, without the writer under test. Bytes are literal hex, the
// Wire functions make fields of numbers and texts.
#pragma once

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "foundations/byte_words.h"
#include "host_link/messages/packet_writer.h"

using Bytes = std::vector<std::uint8_t>;
using Numbers = std::initializer_list<std::uint16_t>;  // of messages, tags, modes: to loop over

// Pairs of hex digits with blanks anywhere between pairs; what stands in single quotes is text.
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
  const std::string bytes = BytesOfValue(value);
  return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(width));
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

// The same with its size.
struct ExactBytes {
  explicit ExactBytes(std::string_view bytes) : Block(ExactBlock({bytes.begin(), bytes.end()})), Count(bytes.size()) {}
  const std::uint8_t* Data() const { return Block.get(); }
  std::uint16_t Size() const { return static_cast<std::uint16_t>(Count); }
  std::unique_ptr<std::uint8_t[]> Block;
  std::size_t Count;
};

// What zlib makes of a body.
inline std::string Deflated(std::string_view body) {
  uLongf size = compressBound(static_cast<uLong>(body.size()));
  std::string stream(size, '\0');
  compress(reinterpret_cast<Bytef*>(stream.data()), &size, reinterpret_cast<const Bytef*>(body.data()),
           static_cast<uLong>(body.size()));
  stream.resize(size);
  return stream;
}
inline Bytes Deflated(const Bytes& body) {
  const std::string stream = Deflated(std::string_view(reinterpret_cast<const char*>(body.data()), body.size()));
  return {stream.begin(), stream.end()};
}

template <typename Value>
std::string WireValue(int tag, Value value) {
  return '#' + BytesOfValue(static_cast<std::uint16_t>(tag)) + BytesOfValue(value);
}
inline std::string WireHead(int tag) {
  return '#' + BytesOfValue(static_cast<std::uint16_t>(tag));
}
inline std::string WireU8(int tag, unsigned value) {
  return WireValue(tag, static_cast<std::uint8_t>(value));
}
inline std::string WireU16(int tag, unsigned value) {
  return WireValue(tag, static_cast<std::uint16_t>(value));
}
inline std::string WireU32(int tag, std::uint32_t value) {
  return WireValue(tag, value);
}
inline std::string WireDouble(int tag, double value) {
  return WireValue(tag, value);
}
inline std::string WireText(int tag, std::string_view text) {
  return WireU16(tag, static_cast<unsigned>(text.size())) + std::string(text);
}
inline std::string WireTerminator() {
  return WireHead(65535);
}
// A header of that mode before a body.
inline std::string WireFrame(const std::string& body, unsigned mode = 0) {
  return WireU16(1, mode) + WireU16(10001, static_cast<unsigned>(body.size())) + body;
}
// A whole message of that number: header, number, fields.
inline std::string WireMessage(unsigned number, const std::string& fields, unsigned mode = 0) {
  return WireFrame(WireU16(10002, number) + fields, mode);
}
