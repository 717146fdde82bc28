#include "feeds/fix/fix_values.h"

#include <array>
#include <charconv>
#include <limits>

#include "foundations/byte_words.h"

namespace {

constexpr const char* kNoNumber = "is not a number";
constexpr std::size_t kExactDigits = 15;

constexpr bool IsDigitCharacter(char character) noexcept {
  return character >= '0' && character <= '9';
}

constexpr bool AreDigits(std::string_view text) noexcept {
  for (const char character : text)
    if (!IsDigitCharacter(character)) return false;
  return true;
}

// Two runs of digits around a point, at least one digit in all.
struct Decimal {
  std::string_view Whole;
  std::string_view Fraction;
  std::uint64_t Digits = 0;  // all of them as one number, if they are at most kExactDigits

  bool IsShort() const noexcept { return Whole.size() + Fraction.size() <= kExactDigits; }
};

bool SplitDecimal(std::string_view text, Decimal& decimal) noexcept {
  std::size_t point = text.size();
  for (std::size_t i = 0; i < text.size(); ++i)
    if (IsDigitCharacter(text[i]))
      decimal.Digits = decimal.Digits * 10 + static_cast<std::uint64_t>(text[i] - '0');
    else if (text[i] == '.' && point == text.size())
      point = i;
    else
      return false;
  decimal.Whole = {text.data(), point};
  if (point < text.size()) decimal.Fraction = {text.data() + point + 1, text.size() - point - 1};
  return !decimal.Whole.empty() || !decimal.Fraction.empty();
}

std::string_view WithoutSign(std::string_view text) noexcept {
  return text.starts_with('-') ? text.substr(1) : text;
}

// Up to 15 digits are exact as an integer, and so is their power of ten: one division rounds once.
double FewDigits(const Decimal& decimal) noexcept {
  static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const auto digits = static_cast<double>(static_cast<std::int64_t>(decimal.Digits));
  return decimal.Fraction.empty() ? digits : digits / kPowers[decimal.Fraction.size()];
}

constexpr std::string_view kTimeForm = "00000000-00:00:00";

// The distance of each byte from the form's is 0 to 9 where that is a digit, else 0: all eight at once.
template <std::size_t kPlace>
bool FitsTimeForm(std::string_view text) noexcept {
  static constexpr auto kWords = [] {
    std::array<std::uint64_t, 2> words{};
    for (std::size_t i = 0; i < 8; ++i) {
      const char form = kTimeForm[kPlace + i];
      words[0] |= std::uint64_t{static_cast<std::uint8_t>(form)} << (8 * i);
      words[1] |= std::uint64_t{form == '0' ? 0x7FU - 9 : 0x7FU} << (8 * i);
    }
    return words;
  }();
  const std::uint64_t distances = LoadValue<std::uint64_t>(text.data() + kPlace) ^ kWords[0];
  // With a high bit set the sum may carry into the next byte, but the answer is no by then.
  return ((distances | (distances + kWords[1])) & kByteHighs) == 0;
}

bool InRange(std::string_view text, std::size_t at, int least, int most) noexcept {
  const int number = (text[at] - '0') * 10 + (text[at + 1] - '0');
  return number >= least && number <= most;
}

}  // namespace

const char* ReadQuantity(std::string_view text, std::uint32_t& quantity) noexcept {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  Decimal decimal;
  if (!SplitDecimal(WithoutSign(text), decimal) || decimal.Whole.empty()) return kNoNumber;
  if (text.starts_with('-')) return "is below 0";
  if (decimal.Fraction.find_first_not_of('0') != std::string_view::npos) return "is a fraction";
  std::uint64_t number = 0;
  for (const char digit : decimal.Whole)
    if (number = number * 10 + static_cast<std::uint64_t>(digit - '0'); number > kMost) return "is above 4294967295";
  quantity = static_cast<std::uint32_t>(number);
  return nullptr;
}

const char* ReadPrice(std::string_view text, double& price) noexcept {
  const std::string_view digits = WithoutSign(text);
  Decimal decimal;
  if (!SplitDecimal(digits, decimal)) return kNoNumber;
  double number = 0;
  if (decimal.IsShort()) {
    number = FewDigits(decimal);
  } else if (std::from_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed).ec !=
             std::errc()) {
    return "is out of range";
  }
  price = digits.size() < text.size() ? -number : number;
  return nullptr;
}

bool ExceedsDouble(std::string_view price) noexcept {
  if (price.size() <= kExactDigits) return false;
  Decimal decimal;
  if (!SplitDecimal(WithoutSign(price), decimal)) return false;
  const std::size_t trailing = decimal.Fraction.find_last_not_of('0') + 1;  // 0 if there are zeros alone
  const std::size_t leading = decimal.Whole.find_first_not_of('0');
  if (leading != std::string_view::npos) return decimal.Whole.size() - leading + trailing > kExactDigits;
  const std::size_t zeros = decimal.Fraction.find_first_not_of('0');
  return zeros != std::string_view::npos && trailing - zeros > kExactDigits;
}

bool IsFixTime(std::string_view text) noexcept {
  if (text.size() < kTimeForm.size() || !FitsTimeForm<0>(text) || !FitsTimeForm<8>(text) || !IsDigitCharacter(text[16]))
    return false;
  const std::string_view rest = text.substr(kTimeForm.size());
  if (!rest.empty() && (rest[0] != '.' || rest.size() == 1 || !AreDigits(rest.substr(1)))) return false;
  return InRange(text, 4, 1, 12) && InRange(text, 6, 1, 31) && InRange(text, 9, 0, 23) && InRange(text, 12, 0, 59) &&
         InRange(text, 15, 0, 60);
}
