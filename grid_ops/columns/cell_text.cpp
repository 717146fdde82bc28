#include "grid_ops/columns/cell_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "foundations/date_time.h"
#include "platform/locale.h"

namespace {

using Kind = ColumnField::Kind;

CellValue ValueOfField(std::string_view server, const TradeRecord& record, const ColumnField& field) noexcept {
  switch (field.Form) {
    case Kind::None:
      return {};
    case Kind::Server:
      return server;
    case Kind::Text:
      return TextOfField(record, field);
    case Kind::Integer:
      return FieldAs<std::int32_t>(record, field);
    case Kind::Short:
      return std::int32_t{FieldAs<std::int16_t>(record, field)};
    case Kind::Double:
      return FieldAs<double>(record, field);
    case Kind::Side:
    case Kind::OrderType:
    case Kind::ProductType:
    case Kind::OpenClose:
      return CodeName(record, field.Form);
  }
  return {};
}

// Prints up to fifteen digits without trailing zeros, an exponent where it is shorter, and zero and NaN without a sign.
// A price is mostly the double nearest to a decimal of four places: scaling finds it and dividing back proves it. Above
// kEnd six decimals would print more digits than the double has.
char* PrintShown(char* to, double value) noexcept {
  constexpr double kScale = 10'000, kEnd = 0x1p33;
  constexpr int kDigits = 15;
  if (value == 0 || std::isnan(value)) value = std::fabs(value);
  if (std::fabs(value) < kEnd && static_cast<double>(std::llrint(value * kScale)) / kScale == value) {
    to = PrintFixed(to, value, Decimals::Six);
    while (to[-1] == '0') --to;
    return to[-1] == '.' ? to - 1 : to;
  }
  return std::to_chars(to, to + kLongestFixed, value, std::chars_format::general, kDigits).ptr;
}

char* PrintQuoted(char* to, const TradeRecord& record, const ColumnField& field) noexcept {
  *to++ = '"';
  to = PrintField(to, FieldPlace(record, field), field.Size);
  *to++ = '"';
  return to;
}

// A function template, so that the compiler evaluates the row of the table.
template <std::size_t kColumn>
char* PrintCell(char* to, std::string_view server, const TradeRecord& record) noexcept {
  constexpr const ColumnField& kField = kTradeColumns[kColumn].Value;
  switch (kTradeColumns[kColumn].Plain) {
    case PlainCell::Value:
    case PlainCell::Dated:
      return PrintValue<kColumn>(to, server, record);
    case PlainCell::Decimals6:
      return PrintFixed(to, FieldAs<double>(record, kField), Decimals::Six);
    case PlainCell::Trimmed:
      return PrintText(to, WithoutTrailingBlanks(TextOfField(record, kField)));
    case PlainCell::Quoted:  // Intentional: embedded quotes are not doubled; the format has no escapes.
      return PrintQuoted(to, record, kField);
    case PlainCell::Empty:
      return to;
  }
  return to;
}

char* PrintNothing(char* to, std::string_view, const TradeRecord&) noexcept {
  return to;
}

template <std::size_t... kColumns>
constexpr auto PrintersOf(std::index_sequence<kColumns...>) {
  return std::array<CellPrinter, sizeof...(kColumns)>{PrintCell<kColumns>...};
}
constexpr auto kPrinters = PrintersOf(std::make_index_sequence<kTradeColumnCount>());

}  // namespace

std::string_view CodeName(const TradeRecord& record, Kind kind) noexcept {
  if (kind == Kind::Side) return SideText(record.Side);
  if (kind == Kind::OrderType) return OrderTypeText(record.OrderType);
  if (kind == Kind::ProductType) return ProductTypeText(record.ProductType);
  if (kind == Kind::OpenClose) return OpenCloseText(record.OpenClose);
  return {};
}

CellValue TradeCellValue(std::string_view serverName, const TradeRecord& record, int column) noexcept {
  if (!IsTradeColumn(column)) return {};
  const ColumnField& field = kTradeColumns[column].Value;
  switch (kTradeColumns[column].Grid) {
    case GridCell::Blank:
      return {};
    case GridCell::Clock:
      return ClockOf(TextOfField(record, field));
    case GridCell::Shown:
    case GridCell::WholeNumber:
      break;
  }
  return ValueOfField(serverName, record, field);
}

std::string_view ShownText(std::string_view serverName, const TradeRecord& record, int column,
                           CellScratch& scratch) noexcept {
  const CellValue value = TradeCellValue(serverName, record, column);
  if (const auto* text = std::get_if<std::string_view>(&value)) return *text;
  const char* end = scratch;
  if (const auto* number = std::get_if<std::int32_t>(&value)) end = PrintSigned(scratch, *number);
  if (const auto* number = std::get_if<double>(&value)) end = PrintShown(scratch, *number);
  return {scratch, static_cast<std::size_t>(end - scratch)};
}

void SetShownText(std::wstring& text, std::string_view serverName, const TradeRecord& record, int column) {
  CellScratch scratch;
  const std::string_view shown = ShownText(serverName, record, column, scratch);
  text.resize(shown.size());
  text.resize(CodePageToWide(shown, text.data()));
}

CellPrinter TradeCellPrinter(int column) noexcept {
  return IsTradeColumn(column) ? kPrinters[static_cast<std::size_t>(column)] : PrintNothing;
}

void AppendTradeCell(LineBuffer& line, std::string_view server, const TradeRecord& record, int column) noexcept {
  line.EndAt(TradeCellPrinter(column)(line.Tail(), server, record));
}

std::string TradeCellText(std::string_view server, const TradeRecord& record, int column,
                          const std::string& dateFormat) {
  if (!IsTradeColumn(column)) return {};
  const TradeColumn& row = kTradeColumns[column];
  if (row.Plain == PlainCell::Dated && !dateFormat.empty())
    return FormatTimeText(ParseTimeText(std::string(TextOfField(record, row.Value)), kStoredTime), dateFormat, false);
  LineBuffer line;
  line.Start(LongestTradeCell(server));
  AppendTradeCell(line, server, record, column);
  return std::string(line.Text());
}
