#include "demo_venue/venue_text.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <numeric>

VenueTime VenueNow() {
  using namespace std::chrono;
  return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

std::string SendingTimeText(VenueTime time) {
  using namespace std::chrono;
  const sys_time<milliseconds> at{milliseconds(time / 1000)};
  const auto day = floor<days>(at);
  const year_month_day date{day};
  const hh_mm_ss clock{at - day};
  std::array<char, 64> text{};
  const int size =
      std::snprintf(text.data(), text.size(), "%04d%02u%02u-%02d:%02d:%02d.%03d", static_cast<int>(date.year()),
                    static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                    static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                    static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
  return {text.data(), static_cast<std::size_t>(size)};
}

VenueText& VenueText::Add(int tag, std::string_view value) {
  std::array<char, 16> number{};
  const char* end = std::to_chars(number.data(), number.data() + number.size(), tag).ptr;
  Body.append(std::string_view(number.data(), end)).append(1, '=').append(value).append(1, kFieldEnd);
  return *this;
}

VenueText& VenueText::Add(int tag, std::uint64_t value) {
  return Add(tag, std::string_view(std::to_string(value)));
}

VenueText& VenueText::AddNumber(int tag, double value) {
  std::array<char, 400> number{};  // of the longest double
  const char* end = std::to_chars(number.data(), number.data() + number.size(), value, std::chars_format::fixed).ptr;
  return Add(tag, std::string_view(number.data(), end));
}

VenueText& VenueText::Append(const VenueText& fields) {
  Body += fields.Body;
  return *this;
}

namespace {

unsigned ChecksumOf(std::string_view text) {
  return std::accumulate(text.begin(), text.end(), 0U,
                         [](unsigned sum, char c) { return sum + static_cast<unsigned char>(c); }) %
         256;
}

constexpr std::size_t kTrailerSize = 7;  // 10=nnn and the end of the field

std::string TrailerOf(std::string_view text) {
  std::string digits = std::to_string(ChecksumOf(text));
  digits.insert(0, 3 - digits.size(), '0');
  return "10=" + digits + kFieldEnd;
}

}  // namespace

std::string VenueText::Message(std::string_view beginString) const {
  std::string text = "8=";
  text.reserve(Body.size() + 40);
  text.append(beginString).append(1, kFieldEnd).append("9=").append(std::to_string(Body.size())).append(1, kFieldEnd);
  text += Body;
  text += TrailerOf(text);
  return text;
}

std::string_view VenueField(std::string_view message, int tag) {
  const std::string begin = kFieldEnd + std::to_string(tag) + '=';
  std::size_t value = 0;
  if (message.starts_with(std::string_view(begin).substr(1)))
    value = begin.size() - 1;
  else if (const std::size_t found = message.find(begin); found != std::string_view::npos)
    value = found + begin.size();
  else
    return {};
  return message.substr(value, message.find(kFieldEnd, value) - value);
}

std::uint64_t VenueNumber(std::string_view message, int tag) {
  const std::string_view text = VenueField(message, tag);
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

bool VenueFrames::Take(std::string& message) {
  for (;;) {
    Bytes.erase(0, std::min(Bytes.find("8=FIX"), Bytes.size()));
    const std::size_t length = Bytes.find(
        "\x01"
        "9=");
    const std::size_t body = length == std::string::npos ? length : Bytes.find(kFieldEnd, length + 1);
    if (body == std::string::npos) return false;
    const std::size_t size = body + 1 + VenueNumber(Bytes, 9) + kTrailerSize;
    if (size <= Bytes.size()) {
      message = Bytes.substr(0, size);
      const std::string_view text(message.data(), size - kTrailerSize);
      const bool isWhole = message.substr(text.size()) == TrailerOf(text);
      Bytes.erase(0, isWhole ? size : 1);
      if (isWhole) return true;
    } else {
      return false;
    }
  }
}
