// LineBuffer builds one line of text from values, for files that are written trade by trade.
#pragma once

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "foundations/byte_words.h"

inline constexpr std::string_view kLineEnd = "\r\n";  // of every file of trades

// As a stream prints a double by default: six significant digits, no trailing zeros, an exponent if that is shorter.
// Writes at most kLongestDouble characters and returns the end.
inline constexpr std::size_t kLongestDouble = 16;
char* PrintDouble(char* to, double value) noexcept;

// As "%.2lf" and "%.6lf" print it, with a point in any locale, cut after kLongestFixed characters. Infinities print as
// "inf" and NaN as "nan" without a sign.
inline constexpr std::size_t kLongestFixed = 127;
enum class Decimals { Two = 2, Six = 6 };
char* PrintFixed(char* to, double value, Decimals decimals) noexcept;

inline char* PrintSigned(char* to, std::int32_t value) noexcept {
  return std::to_chars(to, to + 11, value).ptr;
}

inline char* PrintText(char* to, std::string_view text) noexcept {
  return to + text.copy(to, text.size());
}
inline char* PrintBlanks(char* to, std::size_t count) noexcept {
  std::memset(to, ' ', count);
  return to + count;
}

// The text of a field of at most that many bytes, up to its NUL. May overwrite up to seven bytes after it. Copies eight
// bytes at a time. Inline, so that it is compiled for each field's size.
inline char* PrintField(char* to, const char* field, std::size_t size) noexcept {
  std::size_t at = 0;
  for (; at + 8 <= size; at += 8) {
    std::uint64_t word;
    std::memcpy(&word, field + at, 8);
    std::memcpy(to, &word, 8);
    const std::uint64_t zeros = ZeroBytes(word);
    if (zeros != 0) return to + std::countr_zero(zeros) / 8;
    to += 8;
  }
  for (; at < size && field[at] != '\0'; ++at) *to++ = field[at];
  return to;
}

class LineBuffer {
 public:
  // Empties the line and makes room for that many characters.
  void Start(std::size_t room) {
    if (Characters.size() < room) Characters.resize(room);
    End = Characters.data();
  }
  void Append(char character) noexcept { *End++ = character; }
  void Append(std::string_view text) noexcept { End = PrintText(End, text); }
  void Append(const char* text) noexcept { Append(std::string_view(text)); }
  void AppendSigned(std::uint32_t value) noexcept { End = PrintSigned(End, static_cast<std::int32_t>(value)); }
  void AppendDouble(double value) noexcept { End = PrintDouble(End, value); }
  void AppendFixed(double value, Decimals decimals) noexcept { End = PrintFixed(End, value, decimals); }
  void AppendBlanks(std::size_t count) noexcept { End = PrintBlanks(End, count); }
  void AppendField(const char* field, std::size_t size) noexcept { End = PrintField(End, field, size); }
  // The end of the text, for a caller that prints there and then calls EndAt.
  char* Tail() noexcept { return End; }
  void EndAt(char* end) noexcept { End = end; }
  // Drops the text and keeps the room.
  void Restart() noexcept { End = Characters.data(); }
  std::string_view Text() const noexcept {
    return {Characters.data(), static_cast<std::size_t>(End - Characters.data())};
  }

 private:
  std::vector<char> Characters;
  char* End = nullptr;
};
