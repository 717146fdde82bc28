#include "grid_ops/columns/stored_time.h"

#include "foundations/date_time.h"
#include "foundations/text_tools.h"
#include "grid_ops/columns/cell_text.h"

namespace {

constexpr std::size_t kStoredLength = kClockPlace + kClockLength;
constexpr std::size_t kDayTextLength = 12;  // "01 MAR 2026 "
constexpr std::size_t kWidth = kDayTextLength + kClockLength;

bool IsTwoDigitsBelow(std::string_view text, char firstEnd) {
  return text[0] >= '0' && text[0] < firstEnd && text[1] >= '0' && text[1] <= '9';
}

// A clock that is printed as it is stored: no hour, minute or second runs over.
bool IsPlainClock(std::string_view clock) {
  const bool hour = IsTwoDigitsBelow(clock, '2') || (clock[0] == '2' && clock[1] >= '0' && clock[1] < '4');
  return hour && clock[2] == ':' && IsTwoDigitsBelow(clock.substr(3), '6') && clock[5] == ':' &&
         IsTwoDigitsBelow(clock.substr(6), '6');
}

}  // namespace

std::string_view StoredTimeText::Of(std::string_view stored) {
  stored = stored.size() < kStoredLength ? std::string_view() : stored.substr(0, kStoredLength);
  if (KnowsDay(stored)) {
    ClockOf(stored).copy(DayText.data() + kDayTextLength, kClockLength);
    return DayText;
  }
  if (stored != Stored) {
    Stored = stored;
    Text = Reckon(stored);
  }
  return Text;
}

// Learns the day where it can: not from a day before 1970, whose text has no clock.
bool StoredTimeText::KnowsDay(std::string_view stored) {
  if (stored.empty() || !IsPlainClock(ClockOf(stored))) return false;
  if (stored.substr(0, kClockPlace) == Day) return true;
  std::string text = Reckon(stored);
  if (!text.ends_with(ClockOf(stored))) return false;
  Day = stored.substr(0, kClockPlace);
  DayText = std::move(text);
  return true;
}

std::string StoredTimeText::Reckon(std::string_view stored) {
  const std::int64_t instant = ParseTimeText(std::string(stored), kStoredTime);
  std::string text =
      ToUpperText(FormatTimeText(instant, "dd MMM yyyy", true) + ' ' + FormatTimeText(instant, "HH:mm:ss", true));
  if (text.size() < kWidth) text.resize(kWidth, ' ');
  return text;
}
