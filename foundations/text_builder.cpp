#include "foundations/text_builder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include "foundations/error_report.h"
#include "platform/faults.h"
#include "platform/locale.h"

namespace QOR::Base {

namespace {

constexpr std::size_t kDefaultDecimals = 2;
constexpr std::size_t kMostDecimals = 8;

// The index of a kind of argument in FormatArgument.
template <typename Kind, typename... Kinds>
constexpr std::size_t IndexOf(const std::variant<Kinds...>*) {
  std::size_t index = 0;
  (void)((std::is_same_v<Kind, Kinds> || (++index, false)) || ...);
  return index;
}

template <typename Kind>
constexpr std::size_t kIndexOf = IndexOf<Kind>(static_cast<const FormatArgument*>(nullptr));

struct Directive {
  char Letter;
  std::size_t ArgumentIndex;
};

constexpr Directive kDirectives[] = {
    {'C', kIndexOf<std::string_view>},
    {'W', kIndexOf<std::wstring_view>},
    {'c', kIndexOf<char>},
    {'i', kIndexOf<std::int32_t>},
    {'l', kIndexOf<std::int64_t>},
    {'s', kIndexOf<std::int16_t>},
    {'t', kIndexOf<std::int8_t>},
    {'I', kIndexOf<std::uint32_t>},
    {'L', kIndexOf<std::uint64_t>},
    {'Z', kIndexOf<std::uint64_t>},
    {'S', kIndexOf<std::uint16_t>},
    {'T', kIndexOf<std::uint8_t>},
    {'D', kIndexOf<double>},
    {'d', kIndexOf<double>},
    {'F', kIndexOf<float>},
    {'f', kIndexOf<float>},
};
static_assert(std::all_of(std::begin(kDirectives), std::end(kDirectives), [](const Directive& row) {
  return row.Letter >= '#' && row.Letter <= 't' && row.ArgumentIndex < std::variant_size_v<FormatArgument>;
}));

const Directive* FindDirective(char letter) {
  const auto* row = std::find_if(std::begin(kDirectives), std::end(kDirectives),
                                 [letter](const Directive& each) { return each.Letter == letter; });
  return row == std::end(kDirectives) ? nullptr : row;
}

// The magnitude's whole part and its decimals as one count of the last decimal.
struct FixedPoint {
  double Whole;
  std::uint64_t Decimals;
};

// Scales the fraction to one digit more than asked and rounds half up on that digit.
FixedPoint SplitFixed(double magnitude, std::size_t decimals) {
  std::uint64_t steps = 1;
  for (std::size_t decimal = 0; decimal < decimals; ++decimal) steps *= 10;
  double whole = 0;
  const double fraction = std::modf(magnitude, &whole);
  const auto scaled = static_cast<std::uint64_t>(fraction * static_cast<double>(steps * 10));
  const std::uint64_t rounded = scaled / 10 + (scaled % 10 >= 5 ? 1 : 0);
  // The carry out of the decimals; a value with a fraction is small enough to take it exactly.
  return rounded == steps ? FixedPoint{whole + 1, 0} : FixedPoint{whole, rounded};
}

std::string WholeText(double whole) {
  std::array<char, std::numeric_limits<double>::max_exponent10 + 2> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), whole, std::chars_format::fixed, 0).ptr;
  return {digits.data(), end};
}

std::string FixedText(double value, std::size_t decimals) {
  // Nine decimals are out of the writer's reach, and it then writes nothing at all, not even the whole part.
  if (decimals > kMostDecimals) return {};
  if (std::isnan(value)) return "nan";
  const std::string sign = value < 0 ? "-" : "";
  if (std::isinf(value)) return sign + "inf";
  const FixedPoint parts = SplitFixed(std::fabs(value), decimals);
  if (decimals == 0) return sign + WholeText(parts.Whole);
  const std::string digits = std::to_string(parts.Decimals);
  return sign + WholeText(parts.Whole) + '.' + std::string(decimals - digits.size(), '0') + digits;
}

// Writes an argument of any kind.
struct ArgumentWriter {
  std::size_t Decimals;

  std::string operator()(std::string_view text) const { return std::string(text); }
  std::string operator()(std::wstring_view text) const { return WideToCodePage(text); }
  std::string operator()(char character) const { return std::string(1, character); }
  std::string operator()(std::integral auto number) const { return std::to_string(number); }
  std::string operator()(std::floating_point auto number) const {
    return FixedText(static_cast<double>(number), Decimals);
  }
};

bool TakesDecimals(const FormatArgument& argument) {
  return std::holds_alternative<double>(argument) || std::holds_alternative<float>(argument);
}

// Removes a digit from the front of the format, if there is one.
std::size_t TakeDecimals(std::string_view& format) {
  if (format.empty() || format.front() < '0' || format.front() > '9') return kDefaultDecimals;
  const auto digit = static_cast<std::size_t>(format.front() - '0');
  format.remove_prefix(1);
  return digit;
}

// Large enough for the report below, so that reporting a failed growth does not grow.
constexpr std::size_t kReportSize = 64;

}  // namespace

bool CQORString::Reserve(std::size_t newSize) noexcept {
  const std::size_t least = std::max(newSize, TextLength);
  const std::size_t capacity = ((least >> 4) + 1) << 4;
  if (capacity <= least) return false;  // the count went round
  std::unique_ptr<char[]> block(new (std::nothrow) char[capacity]);
  if (!block) return false;
  std::memcpy(block.get(), Text(), TextLength);
  HeapText = std::move(block);
  HeapText[TextLength] = '\0';
  TextCapacity = capacity;
  return true;
}

bool CQORString::Grow(std::size_t newSize) noexcept try {
  if (Reserve(newSize)) return true;
  const unsigned long error = LastSystemError();
  CQORString report;
  // The line number is part of the report's fixed text.
  if (report.Reserve(kReportSize) && report.Format("Failed to initialize buffer: #Z, ", newSize)) {
    CQORLog::ReportFailure({report.Text(), report.Length()}, error, "QOR::Base::CQORString::Grow", 84);
  }
  return false;
} catch (...) {  // Out of memory for the report itself.
  return false;
}

bool CQORString::Append(std::string_view text) noexcept {
  if (text.size() >= TextCapacity - TextLength && !Grow(TextLength + text.size())) return false;
  std::memcpy(Content() + TextLength, text.data(), text.size());
  TextLength += text.size();
  Content()[TextLength] = '\0';
  return true;
}

bool CQORString::AppendFormat(std::string_view format, std::span<const FormatArgument> arguments) {
  while (!format.empty()) {
    const std::size_t plain = std::min(format.find('#'), format.size());
    if (!Append(format.substr(0, plain))) return false;
    format.remove_prefix(plain);
    if (!format.empty() && !AppendDirective(format, arguments)) return false;
  }
  return true;
}

bool CQORString::AppendDirective(std::string_view& format, std::span<const FormatArgument>& arguments) {
  if (format.size() < 2) return false;
  const char letter = format[1];
  format.remove_prefix(2);
  if (letter == '#') return Append("#");
  const Directive* directive = FindDirective(letter);
  if (directive == nullptr || arguments.empty() || arguments.front().index() != directive->ArgumentIndex) return false;
  const FormatArgument& argument = arguments.front();
  arguments = arguments.subspan(1);
  const std::size_t decimals = TakesDecimals(argument) ? TakeDecimals(format) : kDefaultDecimals;
  return Append(std::visit(ArgumentWriter{decimals}, argument));
}

}  // namespace QOR::Base
