// Strict readers of FIX values: quantities, prices, times.
#pragma once

#include <cstdint>
#include <string_view>

// Each returns null with the value set, or what is wrong as it follows the field in a sentence, such as "is a
// fraction".

// A whole number up to 4294967295, written as 100, 100. or 100.00.
const char* ReadQuantity(std::string_view text, std::uint32_t& quantity) noexcept;
// Digits with an optional sign "-" and at most one point; finite, no exponent.
const char* ReadPrice(std::string_view text, double& price) noexcept;
// True if the text has more significant digits than every double keeps, which are 15.
bool ExceedsDouble(std::string_view price) noexcept;
// yyyyMMdd-HH:mm:ss, also with a fraction of a second; a leap second is a second.
bool IsFixTime(std::string_view text) noexcept;
