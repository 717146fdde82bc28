// LineBuffer: one line of text put together from values, for files that are written trade by trade. Not a text class:
// the room is asked for once a line, and the appends do not check it. One thread at a time.
#pragma once

#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

// Six significant digits, trailing zeros dropped, an exponent where it is shorter: as a stream prints a double by
// default. Writes at most kLongestDouble characters and returns the end.
inline constexpr std::size_t kLongestDouble = 16;
char* PrintDouble(char* to, double value) noexcept;

class LineBuffer {
 public:
  // Empties the line and makes room for that many characters.
  void Start(std::size_t room) {
    if (Characters.size() < room) Characters.resize(room);
    End = Characters.data();
  }
  void Append(char character) noexcept { *End++ = character; }
  void Append(std::string_view text) noexcept {
    std::memcpy(End, text.data(), text.size());
    End += text.size();
  }
  void Append(const char* text) noexcept { Append(std::string_view(text)); }
  void AppendSigned(std::uint32_t value) noexcept {
    End = std::to_chars(End, End + 11, static_cast<std::int32_t>(value)).ptr;
  }
  void AppendDouble(double value) noexcept { End = PrintDouble(End, value); }
  std::string_view Text() const noexcept {
    return {Characters.data(), static_cast<std::size_t>(End - Characters.data())};
  }

 private:
  std::vector<char> Characters;
  char* End = nullptr;
};
