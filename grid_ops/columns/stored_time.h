// StoredTimeText: the times of trades as the exchange trade files have them, "20260301-09:15:30" as "01 MAR 2026
// 09:15:30". One object for each writer.
#pragma once

#include <string>
#include <string_view>

// Promises: what ParseTimeText and FormatTimeText give, in upper case, for any text.
// Works by remembering: a day's times mostly differ in the clock alone, which stands in text and result alike, so that
// the day is reckoned once; any other text is reckoned when it differs from the one before.
class StoredTimeText {
 public:
  // 20 characters, all blanks where the time is before 1970. Valid until the next call.
  std::string_view Of(std::string_view stored);

 private:
  bool KnowsDay(std::string_view stored);
  static std::string Reckon(std::string_view stored);

  std::string Stored, Text = Reckon({});  // the last text and its result
  std::string Day;                        // "yyyyMMdd-" of the text whose result stands in DayText
  std::string DayText;
};
