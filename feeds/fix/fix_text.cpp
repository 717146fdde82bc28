#include "feeds/fix/fix_text.h"

#include <algorithm>
#include <charconv>

bool FixText::IsHead(const FixField& field) const noexcept {
  if (Count == 1) return field.Tag == 8 && !field.Value.empty();
  return field.Tag == 9 && !field.Value.empty() && std::all_of(field.Value.begin(), field.Value.end(), IsDigit);
}

bool FixText::IsTrailer(std::string_view value) noexcept {
  return value.size() == 3 && std::all_of(value.begin(), value.end(), IsDigit);
}

// A length that is no number makes the data an ordinary field.
void FixText::ExpectData(const FixField& length) noexcept {
  const char* const end = length.Value.data() + length.Value.size();
  const auto [last, error] = std::from_chars(length.Value.data(), end, DataLength);
  if (error == std::errc() && last == end) DataTag = kDataTags[length.Tag];
}
