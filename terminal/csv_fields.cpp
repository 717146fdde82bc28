#include "terminal/csv_fields.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

template <typename Number>
bool ReadWhole(std::string_view text, Number& value) {
  Number read{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  value = read;
  return true;
}

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

}  // namespace

FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::string& value) {
  if (text.size() > limit) return "a shorter text";
  if (std::any_of(text.begin(), text.end(), IsControl)) return "a text without control characters";
  value.assign(text);
  return nullptr;
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, std::uint8_t& value) {
  return ReadWhole(text, value) ? nullptr : "a whole number from 0 to 255";
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, std::uint16_t& value) {
  return ReadWhole(text, value) ? nullptr : "a whole number from 0 to 65535";
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, std::uint32_t& value) {
  return ReadWhole(text, value) ? nullptr : "a whole number from 0 to 4294967295";
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, double& value) {
  double read = 0;
  if (!ReadWhole(text, read) || !std::isfinite(read)) return "a number";
  value = read;
  return nullptr;
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, TradeSide& value) {
  if (text != "Buy" && text != "Sell") return "Buy or Sell";
  value = text == "Buy" ? TradeSide::Buy : TradeSide::Sell;
  return nullptr;
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, DayTime& value) {
  return ParseDayTime(text, value) ? nullptr : "a time such as 20131007-12:00:00";
}
