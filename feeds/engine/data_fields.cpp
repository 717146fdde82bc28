#include "feeds/engine/data_fields.h"

#include <cstdint>
#include <cstdlib>
#include <map>

namespace {

constexpr int kTags = 65536;  // no dictionary has more
constexpr char kFieldEnd = '\x01';
constexpr std::uint32_t kSignature = 89, kSignatureLength = 93;

std::uint32_t LengthTagOf(std::uint32_t data) noexcept {
  return data == kSignature ? kSignatureLength : data - 1;
}

// The tag before "=" as QuickFIX reads it, with a sign, zeros before it and digits beyond 32 bits; null if there is
// none. The text ends with a zero byte.
const char* ReadTag(const char* text, std::uint32_t& tag) noexcept {
  const bool isNegative = *text == '-';
  if (isNegative) ++text;
  for (tag = 0; *text >= '0' && *text <= '9'; ++text) tag = tag * 10 + static_cast<std::uint32_t>(*text - '0');
  if (isNegative) tag = 0 - tag;
  return *text == '=' ? text + 1 : nullptr;
}

// Gives each field's tag and the begin of its value to take, wherever a SOH stands before a tag.
template <typename Take>
void ForEachField(const std::string& text, Take take) {
  for (std::size_t soh = text.find(kFieldEnd); soh != std::string::npos; soh = text.find(kFieldEnd, soh + 1)) {
    std::uint32_t tag = 0;
    if (const char* value = ReadTag(text.c_str() + soh + 1, tag)) take(tag, value);
  }
}

}  // namespace

DataFields::DataFields(const FIX::DataDictionaryProvider& dictionaries, const std::string& beginString)
    : IsData(kTags) {
  const FIX::DataDictionary& session = dictionaries.getSessionDataDictionary(FIX::BeginString(beginString));
  const FIX::DataDictionary& application = dictionaries.getApplicationDataDictionary(FIX::ApplVerID("9"));
  for (int tag = 1; tag < kTags; ++tag)
    IsData[static_cast<std::size_t>(tag)] = session.isDataField(tag) || application.isDataField(tag);
}

bool DataFields::HasLengthBeyondEnd(const std::string& text) const {
  std::map<std::uint32_t, long> rooms;  // by the tag of the length; few messages have any
  const char* const last = text.c_str() + text.size() - 1;
  ForEachField(text, [&](std::uint32_t tag, const char* value) {
    if (tag < IsData.size() && IsData[tag]) rooms[LengthTagOf(tag)] = last - value;
  });
  bool isBeyond = false;
  if (rooms.empty()) return isBeyond;
  ForEachField(text, [&](std::uint32_t tag, const char* value) {
    const auto room = rooms.find(tag);
    if (room == rooms.end()) return;
    const long told = std::atol(value);
    isBeyond = isBeyond || told < 0 || told > room->second;
  });
  return isBeyond;
}
