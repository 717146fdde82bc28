// Wire messages put together by hand, from the layout of the format and not by the writer under test.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

template <typename Value>
std::string BytesOfValue(Value value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}
inline std::string WireHead(int tag) {
  std::string head(1, '#');
  return head += BytesOfValue(static_cast<std::uint16_t>(tag));
}
inline std::string WireU8(int tag, unsigned value) {
  return WireHead(tag) + static_cast<char>(value);
}
inline std::string WireU16(int tag, unsigned value) {
  return WireHead(tag) + BytesOfValue(static_cast<std::uint16_t>(value));
}
inline std::string WireU32(int tag, std::uint32_t value) {
  return WireHead(tag) + BytesOfValue(value);
}
inline std::string WireDouble(int tag, double value) {
  return WireHead(tag) + BytesOfValue(value);
}
inline std::string WireText(int tag, std::string_view text) {
  return WireU16(tag, static_cast<unsigned>(text.size())) + std::string(text);
}
inline std::string WireTerminator() {
  return WireHead(65535);
}
// A whole message of that number: header, number, fields.
inline std::string WireMessage(unsigned number, const std::string& fields, unsigned mode = 0) {
  const std::string body = WireU16(10002, number) + fields;
  return WireU16(1, mode) + WireU16(10001, static_cast<unsigned>(body.size())) + body;
}

// Bytes in a block of their exact size, so that a sanitizer sees one byte too far.
class ExactBytes {
 public:
  explicit ExactBytes(std::string_view bytes) : Block(new std::uint8_t[bytes.size()]), Count(bytes.size()) {
    if (Count != 0) std::memcpy(Block.get(), bytes.data(), Count);
  }
  const std::uint8_t* Data() const { return Block.get(); }
  std::uint16_t Size() const { return static_cast<std::uint16_t>(Count); }

 private:
  std::unique_ptr<std::uint8_t[]> Block;
  std::size_t Count;
};
