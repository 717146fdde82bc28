#include "grid_ops/rows/record_search.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>

#include "foundations/text_tools.h"
#include "grid_ops/rows/book_rows.h"
#include "platform/locale.h"

namespace {

using Kind = ColumnField::Kind;

constexpr std::size_t kBlock = sizeof(__m128i);
constexpr std::size_t kBlocksAtOnce = 4;
constexpr std::size_t kLineBytes = 64;
constexpr std::uint16_t kNearBytes = 32;  // a gap between fields that is searched rather than skipped
constexpr unsigned kIntegerAnswerBits = 9, kDoubleAnswerBits = 14;  // prices are many
constexpr std::wstring_view kIntegerLetters = L"-0123456789";
constexpr std::wstring_view kDoubleLetters = L"-+.0123456789einfa";  // 1e+20, nan, inf
constexpr std::size_t kLongestInteger = 11;

// Blocks at both anchors of a text begin in its field, so they end at most that far behind it.
constexpr bool BlocksStayInRecord() {
  for (const TradeColumn& column : kTradeColumns)
    if (column.Value.Form == Kind::Text && column.Grid != GridCell::Blank &&
        column.Value.Offset + column.Value.Size + kBlock > sizeof(TradeRecord))
      return false;
  return true;
}
static_assert(BlocksStayInRecord());
static_assert(std::ranges::none_of(kTradeColumns, [](const TradeColumn& column) {
  return column.Value.Form == Kind::Short && column.Grid != GridCell::Blank;
}));
static_assert(kTradeColumnCount <= 127);

// Every byte of the code page is a character by itself.
bool IsSingleByteCodePage(std::wstring_view allBytes) {
  return allBytes.size() == 256 && allBytes.find(L'\xFFFD') == std::wstring_view::npos;
}

std::string AllBytes() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

}  // namespace

RecordSearch::RecordSearch(const std::wstring& text, std::span<const int> columns, std::string_view serverName)
    : Wanted(LowerWide(text)), Server(serverName), Columns(columns.begin(), columns.end()) {
  TextAt.fill(-1);
  PrepareBytes();
  if (Wanted.empty() || !Plain) return;
  if (Wanted.find(L'-') == std::wstring::npos)
    for (std::size_t digits = 1; digits < std::min(Wanted.size(), kLongestInteger); ++digits)
      LeastInteger = std::max<std::int64_t>(LeastInteger, 1) * 10;
  for (const int column : Columns)
    if (IsTradeColumn(column) && kTradeColumns[column].Grid != GridCell::Blank) AddColumn(column);
  JoinSpans();
}

// No cell can have a character that no byte is.
void RecordSearch::PrepareBytes() {
  const std::wstring wide = LowerWide(CodePageToWide(AllBytes()));
  Plain = IsSingleByteCodePage(wide);
  if (!Plain || Wanted.empty()) return;
  std::ranges::copy(wide, LowerOf.begin());
  First = AnchorOf(Wanted.front());
  Last = AnchorOf(Wanted.back());
  if (Wanted.find_first_not_of(wide) != std::wstring::npos) Wanted.clear();
}

RecordSearch::Anchor RecordSearch::AnchorOf(wchar_t character) const {
  const auto first = std::ranges::find(LowerOf, character);
  int ignored = 0;
  for (auto byte = first; byte != LowerOf.end(); ++byte)
    if (*byte == character) ignored |= static_cast<int>((byte - LowerOf.begin()) ^ (first - LowerOf.begin()));
  return {static_cast<char>(ignored), static_cast<char>(ignored | (first - LowerOf.begin()))};
}

void RecordSearch::AddColumn(int column) {
  const ColumnField& field = kTradeColumns[column].Value;
  switch (field.Form) {
    case Kind::None:
    case Kind::Short:  // in no column that is shown
      return;
    case Kind::Server:
      Always = Always || HoldsText(Server);
      return;
    case Kind::Text:
      return AddText(field, kTradeColumns[column].Grid == GridCell::Clock);
    case Kind::Integer:
    case Kind::Double:
      return AddNumber(column, field);
    case Kind::Side:
    case Kind::OrderType:
    case Kind::ProductType:
    case Kind::OpenClose:
      return AddCodes(column, field);
  }
}

void RecordSearch::AddText(const ColumnField& field, bool clock) {
  const auto end = static_cast<std::uint16_t>(field.Offset + field.Size);
  const std::int8_t known = TextAt[field.Offset];
  if (known >= 0) {
    TextField& text = Texts[static_cast<std::size_t>(known)];
    (clock ? text.Clock : text.Whole) = true;
    return;
  }
  std::fill(TextAt.begin() + field.Offset, TextAt.begin() + end, static_cast<std::int8_t>(Texts.size()));
  Texts.push_back({{field.Offset, end}, !clock, clock});
}

std::size_t RecordSearch::CodeIndex(const TradeRecord& record, const ColumnField& field) noexcept {
  if (field.Size == 1) return FieldAs<std::uint8_t>(record, field);
  return std::min<std::uint32_t>(FieldAs<std::uint32_t>(record, field), 255);
}
static_assert(std::ranges::all_of(kProductTypes, [](const CodeText& row) { return row.Code < 255; }));

void RecordSearch::AddCodes(int column, const ColumnField& field) {
  CodeField codes{field, {}};
  for (std::size_t code = 0; code < codes.Holding.size(); ++code) {
    TradeRecord record{};
    reinterpret_cast<std::uint8_t*>(&record)[field.Offset] = static_cast<std::uint8_t>(code);
    codes.Holding[code] = Holds(record, column);
  }
  if (codes.Holding.any()) Codes.push_back(codes);
}

bool RecordSearch::CanBeNumber(Kind form) const {
  const std::wstring_view letters = form == Kind::Double ? kDoubleLetters : kIntegerLetters;
  return Wanted.size() <= (form == Kind::Double ? kLongestFixed : kLongestInteger) &&
         Wanted.find_first_not_of(letters) == std::wstring::npos;
}

void RecordSearch::AddNumber(int column, const ColumnField& field) {
  if (!CanBeNumber(field.Form)) return;
  const bool zero = Holds(TradeRecord{}, column);
  const unsigned bits = field.Form == Kind::Double ? kDoubleAnswerBits : kIntegerAnswerBits;
  Numbers.push_back({column, field, 64 - bits, std::vector<NumberField::Known>(std::size_t{1} << bits, {0, zero})});
}

void RecordSearch::JoinSpans() {
  std::vector<Bytes> fields;
  for (const TextField& text : Texts) fields.push_back(text.Place);
  std::ranges::sort(fields, {}, &Bytes::Begin);
  for (const Bytes& field : fields) {
    if (!Spans.empty() && field.Begin <= Spans.back().End + kNearBytes)
      Spans.back().End = field.End;
    else
      Spans.push_back(field);
  }
  const auto fetch = [this](std::size_t begin, std::size_t end) {
    for (std::size_t line = begin; line < end; line += kLineBytes) Lines.push_back(static_cast<std::uint16_t>(line));
    Lines.push_back(static_cast<std::uint16_t>(end - 1));
  };
  for (const Bytes& span : Spans) fetch(span.Begin, span.End);
  for (const NumberField& number : Numbers) fetch(number.Field.Offset, number.Field.Offset + number.Field.Size);
  for (const CodeField& codes : Codes) fetch(codes.Field.Offset, codes.Field.Offset + codes.Field.Size);
}

bool RecordSearch::Holds(const TradeRecord& record) {
  if (Wanted.empty()) return false;
  if (!Plain) return std::ranges::any_of(Columns, [&](int column) { return Holds(record, column); });
  if (Always) return true;
  for (const CodeField& codes : Codes)
    if (codes.Holding[CodeIndex(record, codes.Field)]) return true;
  if (HoldsTextField(record)) return true;
  return std::ranges::any_of(Numbers, [&](NumberField& number) { return HoldsNumber(record, number); });
}

bool RecordSearch::Holds(const TradeRecord& record, int column) const {
  CellScratch scratch;
  return HoldsText(ShownText(Server, record, column, scratch));
}

bool RecordSearch::HoldsText(std::string_view text) const {
  if (Wanted.empty()) return false;
  if (!Plain) return LowerWide(CodePageToWide(text)).find(Wanted) != std::wstring::npos;
  for (std::size_t at = 0; at + Wanted.size() <= text.size(); ++at)
    if (IsAt(text.data() + at)) return true;
  return false;
}

bool RecordSearch::IsAt(const char* place) const noexcept {
  return std::ranges::all_of(
      Wanted, [&](wchar_t character) { return LowerOf[static_cast<std::uint8_t>(*place++)] == character; });
}

// The place has the text. True if that lies before the NUL of one field and is shown.
bool RecordSearch::IsInTextAt(const char* record, std::size_t at) const noexcept {
  const std::int8_t index = TextAt[at];
  if (index < 0) return false;
  const TextField& text = Texts[static_cast<std::size_t>(index)];
  const std::size_t begin = text.Place.Begin, size = text.Place.End - begin;
  const std::size_t from = at - begin, to = from + Wanted.size();
  const void* nul = std::memchr(record + begin, 0, size);
  const std::size_t length =
      nul == nullptr ? size : static_cast<std::size_t>(static_cast<const char*>(nul) - record) - begin;
  if (to > length) return false;
  constexpr std::size_t kClockEnd = kClockPlace + kClockLength;
  return text.Whole || length < kClockEnd || (from >= kClockPlace && to <= kClockEnd);
}

namespace {

// The blocks have a byte with all bits where the character of the anchor may be.
class BlockMatch {
 public:
  template <typename Anchor>
  explicit BlockMatch(const Anchor& anchor)
      : Ignored(_mm_set1_epi8(anchor.Ignored)), Value(_mm_set1_epi8(anchor.Value)) {}
  __m128i In(const char* place) const noexcept {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(place));
    return _mm_cmpeq_epi8(_mm_or_si128(block, Ignored), Value);
  }

 private:
  __m128i Ignored, Value;
};

unsigned Bits(__m128i block) {
  return static_cast<unsigned>(_mm_movemask_epi8(block));
}

}  // namespace

bool RecordSearch::HoldsTextField(const TradeRecord& record) const noexcept {
  const char* bytes = reinterpret_cast<const char*>(&record);
  const BlockMatch first(First), last(Last);
  const std::size_t toLast = Wanted.size() - 1;
  const auto candidates = [&](std::size_t at) {
    return _mm_and_si128(first.In(bytes + at), last.In(bytes + at + toLast));
  };
  for (const Bytes& span : Spans) {
    std::size_t at = span.Begin;
    for (; at + kBlocksAtOnce * kBlock + toLast <= span.End; at += kBlocksAtOnce * kBlock) {
      const __m128i any = _mm_or_si128(_mm_or_si128(candidates(at), candidates(at + kBlock)),
                                       _mm_or_si128(candidates(at + 2 * kBlock), candidates(at + 3 * kBlock)));
      if (Bits(any) != 0 && IsHeldIn(bytes, at, at + kBlocksAtOnce * kBlock)) return true;
    }
    for (; at + toLast < span.End; at += kBlock)
      if (Bits(candidates(at)) != 0 && IsHeldIn(bytes, at, at + kBlock)) return true;
  }
  return false;
}

// The text begins at one of these places.
bool RecordSearch::IsHeldIn(const char* record, std::size_t from, std::size_t to) const noexcept {
  const BlockMatch first(First), last(Last);
  for (std::size_t at = from; at < to; at += kBlock)
    for (unsigned places = Bits(_mm_and_si128(first.In(record + at), last.In(record + at + Wanted.size() - 1)));
         places != 0; places &= places - 1) {
      const std::size_t place = at + static_cast<std::size_t>(std::countr_zero(places));
      if (IsAt(record + place) && IsInTextAt(record, place)) return true;
    }
  return false;
}

bool RecordSearch::HoldsInteger(std::int32_t value) const noexcept {
  char text[kLongestInteger];
  return HoldsText({text, static_cast<std::size_t>(PrintSigned(text, value) - text)});
}

bool RecordSearch::HoldsNumber(const TradeRecord& record, NumberField& number) const {
  const bool isDouble = number.Field.Form == Kind::Double;
  if (!isDouble && std::abs(std::int64_t{FieldAs<std::int32_t>(record, number.Field)}) < LeastInteger) return false;
  const std::uint64_t bits =
      isDouble ? FieldAs<std::uint64_t>(record, number.Field) : FieldAs<std::uint32_t>(record, number.Field);
  NumberField::Known& known = number.Answers[bits * 0x9E3779B97F4A7C15 >> number.Shift];
  if (known.Bits == bits) return known.Held;
  const bool held = isDouble ? Holds(record, number.Column) : HoldsInteger(static_cast<std::int32_t>(bits));
  known = {bits, held};
  return held;
}

namespace {

using Records = std::span<TradeRecord* const>;

// The place of the first record that holds the text; -1 for none. Reads rising addresses, for which memory is quicker:
// the newest trade is on top, but the last in memory.
int FirstHolding(Records records, RecordSearch& search) {
  constexpr int kRecordsAhead = 4;
  const int count = static_cast<int>(records.size());
  const bool rises = std::less<>()(records.front(), records.back());
  int found = -1;
  for (int i = 0; i < count; ++i) {
    const auto recordAt = [&](int at) { return records[static_cast<std::size_t>(rises ? at : count - 1 - at)]; };
    if (i + kRecordsAhead < count) search.Prefetch(recordAt(i + kRecordsAhead));
    const TradeRecord* record = recordAt(i);
    if (record == nullptr || !search.Holds(*record)) continue;
    if (rises) return i;
    found = count - 1 - i;
  }
  return found;
}

}  // namespace

int FindRow(const BookRows& rows, RecordSearch& search, int row, int step, int count) {
  constexpr int kMost = 256;
  std::array<TradeRecord*, kMost> records;
  for (; count > 0; row += step * kMost, count -= kMost) {
    const int taken = std::min(count, kMost), top = step > 0 ? row : row - taken + 1;
    const auto part = std::span(records).first(static_cast<std::size_t>(taken));
    if (rows.CopyRecords(static_cast<std::size_t>(top), part) != part.size()) return -1;
    if (step < 0) std::ranges::reverse(part);
    const int found = FirstHolding(part, search);
    if (found >= 0) return row + step * found;
  }
  return -1;
}
