// The kinds of value that a field of a CSV file can have, each with its strict reader. A field is taken whole or not at
// all: no blanks, no sign that the kind does not know, nothing behind the number. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "terminal/day_time.h"

// As a trade message carries it.
enum class TradeSide : std::uint8_t { Buy = 1, Sell = 2 };

// Each stores the value and returns nothing, or returns what the field would have to be and leaves the value alone.
// limit is the number of characters of the longest text; other kinds have none.
using FieldFault = const char*;
FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::string& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::uint8_t& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::uint16_t& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::uint32_t& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, double& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, TradeSide& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, DayTime& value);
