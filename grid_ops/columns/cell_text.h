// What a book's grid shows in a cell, and what the CSV exports print of it. Column indexes are those of kTradeColumns;
// any other index is an empty cell.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <variant>

#include "grid_ops/columns/trade_columns.h"
#include "trade_data/daily_file/line_buffer.h"

// Nothing, a whole number, a number, or text: the forms that a grid cell can have.
using CellValue = std::variant<std::monostate, std::int32_t, double, std::wstring>;

// The value that the grid shows. serverName is what the column "Server" shows.
CellValue TradeCellValue(std::string_view serverName, const TradeRecord& record, int column);

// What the grid paints of that value, in single bytes, numbers printed into scratch, which must outlive the result.
using CellScratch = char[kLongestFixed];
std::string_view ShownText(std::string_view serverName, const TradeRecord& record, int column,
                           CellScratch& scratch) noexcept;

// The text of a CSV cell. dateFormat is a pattern of foundations/date_time.h for the column "ExchangeTradeTime" alone,
// printed in local time; empty leaves the time as it is stored.
std::string TradeCellText(std::string_view server, const TradeRecord& record, int column,
                          const std::string& dateFormat);

// The same without a date format, printed to a place that has room for LongestTradeCell characters: returns its end.
// Files of a million trades ask once for the printer of each column. An index that is no column prints nothing.
using CellPrinter = char* (*)(char* to, std::string_view server, const TradeRecord& record) noexcept;
CellPrinter TradeCellPrinter(int column) noexcept;
void AppendTradeCell(LineBuffer& line, std::string_view server, const TradeRecord& record, int column) noexcept;
constexpr std::size_t LongestTradeCell(std::string_view server) {
  return std::max(kLongestFixed, server.size());
}

// Where a field stands in the record, and its number.
inline const char* FieldPlace(const TradeRecord& record, const ColumnField& field) noexcept {
  return reinterpret_cast<const char*>(&record) + field.Offset;
}
template <typename Number>
Number FieldAs(const TradeRecord& record, const ColumnField& field) noexcept {
  Number number;
  std::memcpy(&number, FieldPlace(record, field), sizeof number);
  return number;
}
// The text of a field: up to its NUL, or the whole field where it has none.
inline std::string_view TextOfField(const TradeRecord& record, const ColumnField& field) noexcept {
  const char* text = FieldPlace(record, field);
  const void* end = std::memchr(text, 0, field.Size);
  return {text, end == nullptr ? field.Size : static_cast<std::size_t>(static_cast<const char*>(end) - text)};
}

// "HH:mm:ss" of "yyyyMMdd-HH:mm:ss"; a shorter text whole.
inline std::string_view ClockOf(std::string_view time) noexcept {
  return time.size() >= kClockPlace + kClockLength ? time.substr(kClockPlace, kClockLength) : time;
}

inline std::string_view WithoutTrailingBlanks(std::string_view text) noexcept {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

// The pattern of a record's times.
inline constexpr const char* kStoredTime = "yyyyMMdd-HH:mm:ss";

// The value of a field as single-byte text: a text or a coded field's name without a copy, numbers printed into
// scratch, which must outlive the result; doubles with two decimals.
std::string_view FieldText(std::string_view server, const TradeRecord& record, const ColumnField& field,
                           CellScratch& scratch) noexcept;

// The value of a column, printed to a place with room as for a cell: returns the end.
template <std::size_t kColumn>
char* PrintValue(char* to, std::string_view server, const TradeRecord& record) noexcept {
  constexpr const ColumnField& kField = kTradeColumns[kColumn].Value;
  if constexpr (kField.Form == ColumnField::Kind::Text) {
    return PrintField(to, FieldPlace(record, kField), kField.Size);
  } else if constexpr (kField.Form == ColumnField::Kind::Integer) {
    return PrintSigned(to, FieldAs<std::int32_t>(record, kField));
  } else {
    CellScratch scratch;
    return PrintText(to, FieldText(server, record, kField, scratch));
  }
}

// A number as grid and filter show it: up to fifteen digits, no zeros behind the point, an exponent where it is
// shorter; no sign before a zero. Writes at most kLongestFixed characters.
char* PrintShown(char* to, double value) noexcept;

// What the grid paints of a value; the filter compares the same text.
std::wstring TextOfCell(const CellValue& value);
