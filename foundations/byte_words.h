// Numbers as little-endian bytes at any place: of messages, stored settings and packed records. Alignment does not
// matter.
#pragma once

#include <bit>
#include <cstring>
#include <string>

static_assert(std::endian::native == std::endian::little, "values are copied to and from bytes as they are");

template <typename Value>
Value LoadValue(const void* place) noexcept {
  Value value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

template <typename Value>
void StoreValue(void* place, const Value& value) noexcept {
  std::memcpy(place, &value, sizeof value);
}

template <typename Value>
std::string BytesOfValue(const Value& value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}
