#include "grid_ops/exports/trade_file_text.h"

#include <array>
#include <utility>

#include "foundations/byte_words.h"
#include "foundations/date_time.h"
#include "foundations/text_tools.h"

namespace {

using Rule = FixedCell::Rule;

char* FillUp(char* start, char* end, std::size_t width) noexcept {
  const auto length = static_cast<std::size_t>(end - start);
  return length < width ? PrintBlanks(end, width - length) : end;
}

bool HasMaster(const TradeRecord& record, const ColumnField& field) noexcept {
  return record.MasterRecord != nullptr && field.MasterOffset != ColumnField::kNoMaster;
}

// The address of the value: in the linked master if it has that field, else in the record.
const char* PlaceOf(const TradeRecord& record, const ColumnField& field) noexcept {
  return HasMaster(record, field) ? reinterpret_cast<const char*>(record.MasterRecord) + field.MasterOffset
                                  : FieldPlace(record, field);
}

template <std::size_t kColumn>
char* PrintFileValue(char* to, std::string_view server, const TradeRecord& record) noexcept {
  constexpr const ColumnField& kField = kTradeColumns[kColumn].Value;
  if (!HasMaster(record, kField)) return PrintValue<kColumn>(to, server, record);
  if (kField.Form == ColumnField::Kind::Text) return PrintField(to, PlaceOf(record, kField), kField.Size);
  return PrintFixed(to, LoadValue<double>(PlaceOf(record, kField)), Decimals::Two);
}

// Pads with leading blanks to the width. A longer text is printed whole.
char* PrintInFront(char* to, std::string_view number, std::size_t width) noexcept {
  if (number.size() < width) to = PrintBlanks(to, width - number.size());
  return PrintText(to, number);
}

std::string_view FixedText(double value, CellScratch& scratch) noexcept {
  return {scratch, static_cast<std::size_t>(PrintFixed(scratch, value, Decimals::Two) - scratch)};
}

double DividedPrice(const PriceDivisors& divisors, const TradeRecord& record) {
  const double price = record.Price;
  if (record.MasterRecord == nullptr) return price;
  const std::string_view alias = record.MasterRecord->Alias;
  const auto divisor = divisors.find(alias.empty() ? std::string_view(record.MasterRecord->Symbol) : alias);
  return divisor == divisors.end() ? price : price / divisor->second;
}

char* PrintStrike(char* to, double strike, std::size_t width) noexcept {
  CellScratch scratch;
  const std::string_view text = FixedText(strike, scratch);
  return PrintInFront(to, text == "0.00" || text == "-0.01" ? " " : text, width);
}

char* PrintSymbol(char* to, const TradeRecord& record, const ColumnField& field, std::size_t width) noexcept {
  char* end = PrintText(to, WithoutTrailingBlanks(TextAt(PlaceOf(record, field), field)));
  return HasMaster(record, field) ? FillUp(to, end, width) : end;
}

char* PrintOptionType(char* to, const TradeRecord& record, const ColumnField& field, std::size_t width) noexcept {
  const std::string_view type = TextAt(PlaceOf(record, field), field);
  return FillUp(to, PrintText(to, type == "XX" ? " " : type), width);
}

// Intentional: every position but "NONE" prints "CLOSE", "Open" too, and the count of blanks follows from the length of
// the replaced name.
char* PrintOpenClose(char* to, std::uint8_t openClose, std::size_t width) noexcept {
  const std::string_view name = OpenCloseText(openClose);
  to = PrintText(to, name == "NONE" ? "OPEN" : "CLOSE");
  return name.size() < width ? PrintBlanks(to, width - name.size()) : to;
}

// A function template, so that the compiler evaluates the row of the table.
template <std::size_t kColumn, FixedCell TradeColumn::*kFile>
char* PrintFileCell(char* to, const TradeFileSource& source, const TradeRecord& record) {
  constexpr const ColumnField& kField = kTradeColumns[kColumn].Value;
  constexpr FixedCell kCell = kTradeColumns[kColumn].*kFile;
  CellScratch scratch;
  switch (kCell.How) {
    case Rule::Value:
      return FillUp(to, PrintFileValue<kColumn>(to, source.Server, record), kCell.Width);
    case Rule::Time:
      return FillUp(to, PrintText(to, source.Times.Of(TextOfField(record, kField))), kCell.Width);
    case Rule::Expiry:
      return PrintField(to, source.Fallback.empty() ? FieldPlace(record, kField) : PlaceOf(record, kField),
                        kField.Size);
    case Rule::Symbol:
      return PrintSymbol(to, record, kField, kCell.Width);
    case Rule::OptionType:
      return PrintOptionType(to, record, kField, kCell.Width);
    case Rule::SideDigit:
      return PrintText(to, SideText(record.Side) == "Buy" ? "1" : "2");
    case Rule::Price:
      return PrintInFront(to, FixedText(DividedPrice(source.Divisors, record), scratch), kCell.Width);
    case Rule::Strike:
      return PrintStrike(to, LoadValue<double>(PlaceOf(record, kField)), kCell.Width);
    case Rule::Quoted:
      *to++ = '"';
      to = PrintField(to, FieldPlace(record, kField), kField.Size);
      *to++ = '"';
      return to;
    case Rule::OpenOrClose:
      return PrintOpenClose(to, record.OpenClose, kCell.Width);
    case Rule::AlwaysN:
      return PrintText(to, "N");
    case Rule::Empty:
      return to;
    case Rule::Pancard:
      return HasMaster(record, kField) ? PrintFileValue<kColumn>(to, source.Server, record)
                                       : PrintField(to, record.Pancard, sizeof record.Pancard);
    case Rule::Fallback:
      return PrintText(to, source.Fallback);
  }
  return to;
}

char* PrintFallback(char* to, const TradeFileSource& source, const TradeRecord&) {
  return PrintText(to, source.Fallback);
}

template <FixedCell TradeColumn::*kFile, std::size_t... kColumns>
constexpr auto PrintersOf(std::index_sequence<kColumns...>) {
  return std::array<FileCellPrinter, sizeof...(kColumns)>{PrintFileCell<kColumns, kFile>...};
}
constexpr auto kPrintersFO = PrintersOf<&TradeColumn::FO>(std::make_index_sequence<kTradeColumnCount>());
constexpr auto kPrintersCM = PrintersOf<&TradeColumn::CM>(std::make_index_sequence<kTradeColumnCount>());

constexpr std::size_t kStoredLength = kClockPlace + kClockLength;
constexpr std::size_t kDayTextLength = 12;  // "01 MAR 2026 "
constexpr std::size_t kWidth = kDayTextLength + kClockLength;

bool IsTwoDigitsBelow(std::string_view text, char firstEnd) {
  return text[0] >= '0' && text[0] < firstEnd && text[1] >= '0' && text[1] <= '9';
}

// Hour, minute and second are in range, so that the clock is printed unchanged.
bool IsPlainClock(std::string_view clock) {
  const bool hour = IsTwoDigitsBelow(clock, '2') || (clock[0] == '2' && clock[1] >= '0' && clock[1] < '4');
  return hour && clock[2] == ':' && IsTwoDigitsBelow(clock.substr(3), '6') && clock[5] == ':' &&
         IsTwoDigitsBelow(clock.substr(6), '6');
}

std::string TextOf(FileCellPrinter print, const PriceDivisors& divisors, std::string_view server,
                   const TradeRecord& record, std::string_view fallback) {
  StoredTimeText times;
  std::string text(LongestTradeFileCell(server, fallback), '\0');
  const char* end = print(text.data(), {divisors, server, fallback, times}, record);
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
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
    Text = Convert(stored);
  }
  return Text;
}

// Caches the day of the text, unless the day is before 1970 and so has no clock in its result.
bool StoredTimeText::KnowsDay(std::string_view stored) {
  if (stored.empty() || !IsPlainClock(ClockOf(stored))) return false;
  if (stored.substr(0, kClockPlace) == Day) return true;
  std::string text = Convert(stored);
  if (!text.ends_with(ClockOf(stored))) return false;
  Day = stored.substr(0, kClockPlace);
  DayText = std::move(text);
  return true;
}

std::string StoredTimeText::Convert(std::string_view stored) {
  const std::int64_t instant = ParseTimeText(std::string(stored), kStoredTime);
  std::string text =
      ToUpperText(FormatTimeText(instant, "dd MMM yyyy", true) + ' ' + FormatTimeText(instant, "HH:mm:ss", true));
  if (text.size() < kWidth) text.resize(kWidth, ' ');
  return text;
}

FileCellPrinter TradeCellPrinterFO(int column) noexcept {
  return IsTradeColumn(column) ? kPrintersFO[static_cast<std::size_t>(column)] : PrintFallback;
}

FileCellPrinter TradeCellPrinterCM(int column) noexcept {
  return IsTradeColumn(column) ? kPrintersCM[static_cast<std::size_t>(column)] : PrintFallback;
}

std::string TradeCellTextFO(const PriceDivisors& divisors, std::string_view server, const TradeRecord& record,
                            int column, std::string_view fallback) {
  return TextOf(TradeCellPrinterFO(column), divisors, server, record, fallback);
}

std::string TradeCellTextCM(const PriceDivisors& divisors, std::string_view server, const TradeRecord& record,
                            int column, std::string_view fallback) {
  return TextOf(TradeCellPrinterCM(column), divisors, server, record, fallback);
}
