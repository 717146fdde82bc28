#include "grid_ops/columns/cell_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

#include "foundations/date_time.h"
#include "foundations/text_tools.h"

namespace {

using Kind = ColumnField::Kind;

CellValue WideCell(std::string_view text) {
  return NarrowToWide(std::string(text));
}

char* PrintQuoted(char* to, const TradeRecord& record, const ColumnField& field) noexcept {
  *to++ = '"';
  to = PrintField(to, FieldPlace(record, field), field.Size);
  *to++ = '"';
  return to;
}

// One function for each column, so that what the table says of it is known to the compiler.
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
    case PlainCell::Quoted:  // a quote within is not doubled: meant so
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

std::string_view FieldText(std::string_view server, const TradeRecord& record, const ColumnField& field,
                           CellScratch& scratch) noexcept {
  char* end = scratch;
  switch (field.Form) {
    case Kind::None:
      return {};
    case Kind::Server:
      return server;
    case Kind::Text:
      return TextOfField(record, field);
    case Kind::Integer:
      end = PrintSigned(scratch, FieldAs<std::int32_t>(record, field));
      break;
    case Kind::Short:
      end = PrintSigned(scratch, FieldAs<std::int16_t>(record, field));
      break;
    case Kind::Double:
      end = PrintFixed(scratch, FieldAs<double>(record, field), Decimals::Two);
      break;
    case Kind::Side:
      return SideText(record.Side);
    case Kind::OrderType:
      return OrderTypeText(record.OrderType);
    case Kind::ProductType:
      return ProductTypeText(record.ProductType);
    case Kind::OpenClose:
      return OpenCloseText(record.OpenClose);
  }
  return {scratch, static_cast<std::size_t>(end - scratch)};
}

CellValue TradeCellValue(std::string_view serverName, const TradeRecord& record, int column) {
  if (!IsTradeColumn(column)) return {};
  const ColumnField& field = kTradeColumns[column].Value;
  switch (kTradeColumns[column].Grid) {
    case GridCell::Blank:
      return {};
    case GridCell::Clock:
      return WideCell(ClockOf(TextOfField(record, field)));
    case GridCell::Shown:
    case GridCell::WholeNumber:
      break;
  }
  if (field.Form == Kind::Integer) return FieldAs<std::int32_t>(record, field);
  if (field.Form == Kind::Double) return FieldAs<double>(record, field);
  CellScratch scratch;
  return WideCell(FieldText(serverName, record, field, scratch));
}

std::string_view ShownText(std::string_view serverName, const TradeRecord& record, int column,
                           CellScratch& scratch) noexcept {
  if (!IsTradeColumn(column) || kTradeColumns[column].Grid == GridCell::Blank) return {};
  const ColumnField& field = kTradeColumns[column].Value;
  if (kTradeColumns[column].Grid == GridCell::Clock) return ClockOf(TextOfField(record, field));
  if (field.Form != Kind::Double) return FieldText(serverName, record, field, scratch);
  return {scratch, static_cast<std::size_t>(PrintShown(scratch, FieldAs<double>(record, field)) - scratch)};
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

// A price is mostly the double nearest to a decimal of four places, found by scaling and proved by dividing back. Above
// the end six decimals would show more digits than the double has.
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

std::wstring TextOfCell(const CellValue& value) {
  if (const auto* text = std::get_if<std::wstring>(&value)) return *text;
  if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_wstring(*number);
  const auto* number = std::get_if<double>(&value);
  if (number == nullptr) return {};
  CellScratch scratch;
  return {scratch, PrintShown(scratch, *number)};
}
