#include "grid_ops/rows/column_filter.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "foundations/byte_words.h"
#include "foundations/text_tools.h"
#include "platform/locale.h"

namespace {

using Kind = ColumnField::Kind;

constexpr std::wstring_view kJoin = L"or";
constexpr std::wstring_view kOperators = L" <>=";
// Fields have at most 65 bytes and numbers print in 127; longer server names are cut.
constexpr std::size_t kLongestCell = 128;
static_assert(kLongestCell > kLongestFixed);

bool IsAscii(wchar_t character) {
  return character < 0x80;
}

// Rounds half to even. Overflow of 32 bits gives 0.
std::int32_t WholeNumberOf(double value) noexcept {
  const double rounded = std::nearbyint(value);
  const bool fits =
      rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max();
  return fits ? static_cast<std::int32_t>(rounded) : 0;
}

// Eight bytes of ASCII at once: the high bit of (byte + 0x80 - limit) is set if the byte is not below the limit. Bytes
// from 'A' to 'Z' get bit 5.
constexpr std::uint64_t SmallLetters(std::uint64_t word) {
  const std::uint64_t capitals =
      (word + kByteOnes * (0x80 - 'A')) & ~(word + kByteOnes * (0x80 - 'Z' - 1)) & kByteHighs;
  return word | (capitals >> 2);
}
static_assert(SmallLetters(0x405A41615B7A3900) == 0x407A61615B7A3900);

// A cell of plain ASCII in lower case.
struct LowerCell {
  char Text[kLongestCell + sizeof(std::uint64_t)];
  std::size_t Size = 0;
  bool Plain = true;  // else the rest means nothing

  // Up to the first NUL, at most that many bytes.
  void Take(const char* text, std::size_t size) noexcept;
  bool Holds(std::string_view piece) const noexcept;
};

void LowerCell::Take(const char* text, std::size_t size) noexcept {
  for (;; text += 8, size -= 8, Size += 8) {
    std::uint64_t word = 0;
    if (size >= sizeof word)
      std::memcpy(&word, text, sizeof word);
    else
      for (std::size_t i = 0; i < size; ++i) word |= std::uint64_t{static_cast<std::uint8_t>(text[i])} << 8 * i;
    // The lowest high bit marks the first zero byte; bytes behind it do not count.
    const std::uint64_t zeros = ZeroBytes(word);
    const std::uint64_t counting = (zeros & (0 - zeros)) - 1;
    if ((word & counting & kByteHighs) != 0) Plain = false;
    const std::uint64_t lower = SmallLetters(word & ~kByteHighs);
    std::memcpy(Text + Size, &lower, sizeof lower);
    if (zeros != 0) {
      Size += static_cast<std::size_t>(std::countr_zero(zeros)) / 8;
      return;
    }
  }
}

bool LowerCell::Holds(std::string_view piece) const noexcept {
  if (piece.empty()) return true;
  for (std::size_t at = 0; at + piece.size() <= Size; ++at) {
    std::size_t same = 0;
    while (same < piece.size() && Text[at + same] == piece[same]) ++same;
    if (same == piece.size()) return true;
  }
  return false;
}

}  // namespace

ColumnFilter::ColumnFilter(int column, const std::wstring& filterText) {
  if (!IsTradeColumn(column)) return;
  const TradeColumn& row = kTradeColumns[column];
  if (row.Grid == GridCell::Blank) return;
  Column = column;
  Field = row.Value;
  const bool stored = Field.Form == Kind::Text && row.Grid != GridCell::Clock;
  if (row.Grid == GridCell::WholeNumber)
    PrepareNumber(filterText);
  else
    PrepareText(filterText, stored ? Test::Field : Test::Cell);
}

void ColumnFilter::PrepareNumber(const std::wstring& filterText) {
  const std::size_t start = filterText.find_first_not_of(kOperators);
  if (start == std::wstring::npos) return;
  Number = WideToNumber(filterText.substr(start));
  const auto holds = [&](wchar_t sign) { return filterText.find(sign) != std::wstring::npos; };
  Compare = holds(L'<') ? Test::Less : holds(L'>') ? Test::Greater : holds(L'!') ? Test::Other : Test::Equal;
}

void ColumnFilter::PrepareText(const std::wstring& filterText, Test test) {
  const std::wstring lower = LowerWide(filterText);
  const auto piece = [](std::wstring_view text) {
    text = TrimWide(text);
    const bool ascii = std::all_of(text.begin(), text.end(), IsAscii);
    return Piece{std::wstring(text), ascii ? std::string(text.begin(), text.end()) : std::string(), ascii};
  };
  std::size_t place = 0;
  for (std::size_t join; place < lower.size() && (join = lower.find(kJoin, place)) != std::wstring::npos;
       place = join + kJoin.size())
    if (Piece refused = piece(std::wstring_view(lower).substr(place, join - place)); !refused.Wide.empty())
      Refused.push_back(std::move(refused));
  Wanted = piece(std::wstring_view(lower).substr(place));
  Compare = Wanted.Wide.empty() && place > 0 ? Test::Never : test;
  if (Compare == Test::Cell) PrepareCodes();
}

void ColumnFilter::PrepareCodes() {
  if (Field.Form != Kind::Side && Field.Form != Kind::OrderType && Field.Form != Kind::OpenClose) return;
  TradeRecord record{};
  CellScratch scratch;
  for (std::size_t code = 0; code < AcceptedCodes.size(); ++code) {
    reinterpret_cast<std::uint8_t*>(&record)[Field.Offset] = static_cast<std::uint8_t>(code);
    AcceptedCodes[code] = AcceptsText(ShownText({}, record, Column, scratch));
  }
  Compare = Test::Code;
}

bool ColumnFilter::Accepts(std::string_view serverName, const TradeRecord& record) const noexcept {
  switch (Compare) {
    case Test::Always:
      return true;
    case Test::Never:
      return false;
    case Test::Code:
      return AcceptedCodes[FieldAs<std::uint8_t>(record, Field)];
    case Test::Less:
      return WholeNumberOf(FieldAs<double>(record, Field)) < Number;
    case Test::Greater:
      return WholeNumberOf(FieldAs<double>(record, Field)) > Number;
    case Test::Other:
      return WholeNumberOf(FieldAs<double>(record, Field)) != Number;
    case Test::Equal:
      return WholeNumberOf(FieldAs<double>(record, Field)) == Number;
    case Test::Field:
      return AcceptsText({FieldPlace(record, Field), Field.Size});
    case Test::Cell:
      break;
  }
  CellScratch scratch;
  return AcceptsText(ShownText(serverName, record, Column, scratch));
}

bool ColumnFilter::AcceptsText(std::string_view cell) const noexcept {
  cell = cell.substr(0, kLongestCell);
  LowerCell lower;
  lower.Take(cell.data(), cell.size());
  if (!lower.Plain) return AcceptsWide(cell);
  const auto holds = [&lower](const Piece& piece) { return piece.IsAscii && lower.Holds(piece.Ascii); };
  return holds(Wanted) && std::none_of(Refused.begin(), Refused.end(), holds);
}

bool ColumnFilter::AcceptsWide(std::string_view cell) const noexcept {
  wchar_t wide[kLongestCell];
  const std::size_t size = CodePageToWide(cell.substr(0, cell.find('\0')), wide);
  LowerInPlace({wide, size});
  const std::wstring_view lower(wide, size);
  const auto holds = [&lower](const Piece& piece) { return lower.find(piece.Wide) != std::wstring::npos; };
  return std::none_of(Refused.begin(), Refused.end(), holds) && holds(Wanted);
}

int MatchFilter(std::string_view serverName, const TradeRecord& record, int column, const std::wstring& filterText) {
  return ColumnFilter(column, filterText).Accepts(serverName, record) ? 1 : 0;
}

bool FilterBar::Change(int column, const std::wstring& text) {
  if (column < 0 || column > kTradeColumnCount) return false;
  const auto field =
      std::find_if(Fields.begin(), Fields.end(), [column](const Field& known) { return known.Column == column; });
  std::wstring lower = LowerWide(text);
  if (field == Fields.end()) {
    if (lower.empty()) return false;
    Fields.push_back({column, lower, ColumnFilter(column, lower)});
    return true;
  }
  if (field->Text == lower) return false;
  if (lower.empty())
    Fields.erase(field);
  else
    *field = {column, lower, ColumnFilter(column, lower)};
  return true;
}

std::wstring FilterBar::TextOf(int column) const {
  for (const Field& field : Fields)
    if (field.Column == column) return field.Text;
  return {};
}
