// FixText: the fields of one raw FIX message, in one walk and without an allocation.
//
//   message := 8=text SOH 9=digits SOH field* 10=digit digit digit SOH
//   field   := tag=value SOH            tag: digits, the first not 0
//   data    := length-tag=n SOH data-tag=n bytes SOH      the bytes may hold SOH
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "foundations/byte_words.h"

inline constexpr char kSoh = '\x01';

// Length fields, and the data field that follows each.
struct FixDataField {
  std::uint16_t LengthTag;
  std::uint16_t DataTag;
};
inline constexpr FixDataField kFixDataFields[] = {
    {90, 91},   {93, 89},   {95, 96},   {212, 213}, {348, 349}, {350, 351}, {352, 353}, {354, 355},
    {356, 357}, {358, 359}, {360, 361}, {362, 363}, {364, 365}, {445, 446}, {618, 619}, {621, 622},
};

struct FixField {
  std::uint32_t Tag = 0;
  std::string_view Value;  // of the text that is walked
};

// Never reads past the text, whatever it is. BodyLength and CheckSum are not compared with the text: the engine has
// done that.
class FixText {
 public:
  explicit FixText(std::string_view text) noexcept : Begin(text.data()), At(Begin), End(Begin + text.size()) {}

  // The next field, from 8 to 10; false behind 10 and at the first mistake.
  bool Next(FixField& field) noexcept {
    if (At == End || !ReadTag(field.Tag) || !ReadValue(field)) return false;
    if (++Count <= kHeadFields) return IsHead(field);
    if (field.Tag == kTrailerTag) {
      Whole = At == End && IsTrailer(field.Value);
      return Whole;
    }
    if (field.Tag < kDataTags.size() && kDataTags[field.Tag] != 0) ExpectData(field);
    return true;
  }
  // True behind a well-formed 10 at the very end.
  bool IsWhole() const noexcept { return Whole; }
  // Bytes that were read without a mistake, or where it stands.
  std::size_t Place() const noexcept { return static_cast<std::size_t>(At - Begin); }

 private:
  static constexpr int kHeadFields = 2;
  static constexpr std::uint32_t kTrailerTag = 10;
  static constexpr std::uint32_t kMostTag = 99'999'999;
  static constexpr auto kDataTags = [] {
    std::array<std::uint16_t, 622> tags{};
    for (const FixDataField& row : kFixDataFields) tags[row.LengthTag] = row.DataTag;
    return tags;
  }();

  static constexpr bool IsDigit(char byte) noexcept { return byte >= '0' && byte <= '9'; }

  bool ReadTag(std::uint32_t& tag) noexcept {
    std::uint32_t number = 0;
    const char* at = At;
    for (; at != End && IsDigit(*at) && number <= kMostTag; ++at)
      number = number * 10 + static_cast<std::uint32_t>(*at - '0');
    if (at == End || *at != '=' || number == 0 || *At == '0') return false;
    At = at + 1;
    tag = number;
    return true;
  }
  bool ReadValue(FixField& field) noexcept {
    const char* end = field.Tag == DataTag ? EndOfData() : EndOfText();
    DataTag = 0;
    if (end == nullptr) return false;
    field.Value = {At, static_cast<std::size_t>(end - At)};
    At = end + 1;
    return true;
  }
  // The next SOH, eight bytes at a time; null if there is none.
  const char* EndOfText() const noexcept {
    const char* at = At;
    for (; End - at >= 8; at += 8)
      if (const std::uint64_t found = ZeroBytes(LoadValue<std::uint64_t>(at) ^ kByteOnes); found != 0)
        return at + std::countr_zero(found) / 8;
    for (; at != End; ++at)
      if (*at == kSoh) return at;
    return nullptr;
  }
  // The SOH behind the bytes that the length field has told; null if it is not there.
  const char* EndOfData() const noexcept {
    if (DataLength >= static_cast<std::size_t>(End - At)) return nullptr;
    return At[DataLength] == kSoh ? At + DataLength : nullptr;
  }
  bool IsHead(const FixField& field) const noexcept;
  static bool IsTrailer(std::string_view value) noexcept;
  void ExpectData(const FixField& length) noexcept;

  const char* Begin;
  const char* At;
  const char* End;
  int Count = 0;
  bool Whole = false;
  std::uint32_t DataTag = 0;  // 0, or the data field whose length is known
  std::size_t DataLength = 0;
};
