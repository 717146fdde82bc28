// Numbers as the terminal shows them on the screen and in reports: thousands apart, with the marks of the user's
// region.
#pragma once

#include <cstdint>
#include <string>

#include "platform/locale.h"

// The marks of the user's region, which are read once.
const NumberMarks& ScreenMarks();

// "1,234,567"
std::wstring CountText(std::uint64_t count, const NumberMarks& marks = ScreenMarks());
// The same with a minus before a number below 0.
std::wstring QuantityText(std::int64_t quantity, const NumberMarks& marks = ScreenMarks());
// Two to four decimals; a number that rounds to 0 has no sign. Empty for NaN and infinity.
std::wstring PriceText(double price, const NumberMarks& marks = ScreenMarks());
// So many decimals, otherwise the same.
std::wstring DecimalText(double value, int decimals, const NumberMarks& marks = ScreenMarks());
// A plus before the text of a number above 0.
std::wstring WithSign(double value, std::wstring text);
