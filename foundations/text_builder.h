// CQORString, the single-byte text builder of error reports, and the arguments of its format.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>
#include <variant>

namespace QOR::Base {

// One argument of a format. Its kind lets a directive reject arguments of other kinds.
using FormatArgument =
    std::variant<std::string_view, std::wstring_view, char, std::int8_t, std::int16_t, std::int32_t, std::int64_t,
                 std::uint8_t, std::uint16_t, std::uint32_t, std::uint64_t, float, double>;

// Integer types by size and sign.
template <std::size_t kSize, bool kSigned>
using SizedInteger = std::conditional_t<
    kSize == 1, std::conditional_t<kSigned, std::int8_t, std::uint8_t>,
    std::conditional_t<kSize == 2, std::conditional_t<kSigned, std::int16_t, std::uint16_t>,
                       std::conditional_t<kSize == 4, std::conditional_t<kSigned, std::int32_t, std::uint32_t>,
                                          std::conditional_t<kSigned, std::int64_t, std::uint64_t>>>>;

template <typename Value>
FormatArgument MakeFormatArgument(const Value& value) {
  if constexpr (std::integral<Value> && !std::same_as<Value, char>) {
    return static_cast<SizedInteger<sizeof(Value), std::is_signed_v<Value>>>(value);
  } else if constexpr (std::is_pointer_v<Value>) {
    // A null pointer is an empty text.
    using View = std::basic_string_view<std::remove_cv_t<std::remove_pointer_t<Value>>>;
    return value == nullptr ? View() : View(value);
  } else if constexpr (std::convertible_to<const Value&, std::string_view>) {
    return std::string_view(value);
  } else if constexpr (std::convertible_to<const Value&, std::wstring_view>) {
    return std::wstring_view(value);
  } else {
    return value;
  }
}

class CQORString {
 public:
  CQORString() noexcept = default;
  CQORString(const CQORString&) = delete;
  CQORString& operator=(const CQORString&) = delete;

  // Moves the content to a block of the next multiple of 16 above newSize and above the length. A failure is reported
  // and changes nothing.
  bool Grow(std::size_t newSize) noexcept;

  // Appends the format with its directives replaced by the arguments in order:
  //   ##        one #                        #i #l #s #t   signed, 32, 64, 16 and 8 bits
  //   #C #W #c  narrow text, wide text       #I #L #S #T   unsigned, 32, 64, 16 and 8 bits; #Z is #L
  //             through the code page, char  #D #d #F #f   double and float, two decimals or as many as the digit
  //                                                        after the letter says, 0 to 8; 9 writes nothing
  // False at the first unknown directive, missing argument, argument of another kind or failed growth; what comes
  // before it is appended. Surplus arguments are ignored.
  template <typename... Values>
  bool Format(std::string_view format, const Values&... values) {
    if constexpr (sizeof...(Values) == 0) {
      return AppendFormat(format, {});
    } else {
      const FormatArgument arguments[] = {MakeFormatArgument(values)...};
      return AppendFormat(format, arguments);
    }
  }

  // Ends with a zero byte.
  const char* Text() const noexcept { return HeapText ? HeapText.get() : InlineText; }
  std::size_t Length() const noexcept { return TextLength; }
  std::size_t Capacity() const noexcept { return TextCapacity; }

 private:
  char* Content() noexcept { return HeapText ? HeapText.get() : InlineText; }
  bool Reserve(std::size_t newSize) noexcept;
  bool Append(std::string_view text) noexcept;
  bool AppendFormat(std::string_view format, std::span<const FormatArgument> arguments);
  // Takes the directive and its argument off the front of both.
  bool AppendDirective(std::string_view& format, std::span<const FormatArgument>& arguments);

  std::unique_ptr<char[]> HeapText;  // null while the text fits inline
  std::size_t TextLength = 0;
  std::size_t TextCapacity = sizeof(InlineText);
  char InlineText[16] = {};
};

}  // namespace QOR::Base
