// The cells of a book: the value and text that the grid shows, filters and measures, and the text of a CSV cell.
// Columns are indexes into kTradeColumns; the cell of any other index is empty.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <variant>

#include "foundations/byte_words.h"
#include "grid_ops/columns/trade_columns.h"
#include "trade_data/daily_file/line_buffer.h"

// Nothing, a whole number, a number, or text.
using CellValue = std::variant<std::monostate, std::int32_t, double, std::string_view>;

// The value of a grid cell. serverName is the cell of the column "Server"; texts are views of it or of the record.
CellValue TradeCellValue(std::string_view serverName, const TradeRecord& record, int column) noexcept;

// The text of that value, the only one for painting, filtering and measuring. No allocation: a number is printed into
// the scratch, any other text is a view as above.
using CellScratch = char[kLongestFixed];
std::string_view ShownText(std::string_view serverName, const TradeRecord& record, int column,
                           CellScratch& scratch) noexcept;
// The same as wide text for a window. Reuses the memory of the text.
void SetShownText(std::wstring& text, std::string_view serverName, const TradeRecord& record, int column);

// The text of a CSV cell. dateFormat is a pattern of foundations/date_time.h, in local time, for the column
// "ExchangeTradeTime" alone; empty leaves the time as stored.
std::string TradeCellText(std::string_view server, const TradeRecord& record, int column,
                          const std::string& dateFormat);

// Prints a CSV cell without a date format and returns the end. Requires room for LongestTradeCell characters. A writer
// of many lines gets the printer of each column once; the printer of an unknown column prints nothing.
using CellPrinter = char* (*)(char* to, std::string_view server, const TradeRecord& record) noexcept;
CellPrinter TradeCellPrinter(int column) noexcept;
void AppendTradeCell(LineBuffer& line, std::string_view server, const TradeRecord& record, int column) noexcept;
constexpr std::size_t LongestTradeCell(std::string_view server) {
  return std::max(kLongestFixed, server.size());
}

// The address of a field in a record, and its number.
inline const char* FieldPlace(const TradeRecord& record, const ColumnField& field) noexcept {
  return reinterpret_cast<const char*>(&record) + field.Offset;
}
template <typename Number>
Number FieldAs(const TradeRecord& record, const ColumnField& field) noexcept {
  return LoadValue<Number>(FieldPlace(record, field));
}

// The text at an address: up to its NUL, or the whole field.
inline std::string_view TextAt(const char* place, const ColumnField& field) noexcept {
  const void* end = std::memchr(place, 0, field.Size);
  return {place, end == nullptr ? field.Size : static_cast<std::size_t>(static_cast<const char*>(end) - place)};
}
inline std::string_view TextOfField(const TradeRecord& record, const ColumnField& field) noexcept {
  return TextAt(FieldPlace(record, field), field);
}

// The name of the code in a field of kind Side, OrderType, ProductType or OpenClose; empty for other kinds.
std::string_view CodeName(const TradeRecord& record, ColumnField::Kind kind) noexcept;

// "HH:mm:ss" of "yyyyMMdd-HH:mm:ss"; a shorter text unchanged.
inline std::string_view ClockOf(std::string_view time) noexcept {
  return time.size() >= kClockPlace + kClockLength ? time.substr(kClockPlace, kClockLength) : time;
}

inline std::string_view WithoutTrailingBlanks(std::string_view text) noexcept {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

// The pattern of a record's times.
inline constexpr const char* kStoredTime = "yyyyMMdd-HH:mm:ss";

// Prints the value of a column for a file, doubles with two decimals, and returns the end. Requires the room of a cell.
template <std::size_t kColumn>
char* PrintValue(char* to, std::string_view server, const TradeRecord& record) noexcept {
  using Kind = ColumnField::Kind;
  constexpr const ColumnField& kField = kTradeColumns[kColumn].Value;
  if constexpr (kField.Form == Kind::Text) {
    return PrintField(to, FieldPlace(record, kField), kField.Size);
  } else if constexpr (kField.Form == Kind::Integer) {
    return PrintSigned(to, FieldAs<std::int32_t>(record, kField));
  } else if constexpr (kField.Form == Kind::Short) {
    return PrintSigned(to, FieldAs<std::int16_t>(record, kField));
  } else if constexpr (kField.Form == Kind::Double) {
    return PrintFixed(to, FieldAs<double>(record, kField), Decimals::Two);
  } else {
    return PrintText(to, kField.Form == Kind::Server ? server : CodeName(record, kField.Form));
  }
}
