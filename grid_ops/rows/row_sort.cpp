#include "grid_ops/rows/row_sort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

#include "foundations/byte_words.h"
#include "grid_ops/columns/cell_text.h"

namespace {

using Kind = ColumnField::Kind;

// A record with its current sort word. Words compare as unsigned numbers.
struct SortEntry {
  std::uint64_t Word;
  TradeRecord* Record;
};
using Entries = std::span<SortEntry>;

constexpr std::uint64_t kTopBit = std::uint64_t{1} << 63;

// The compared bytes of a sort column, in words of eight bytes.
struct SortField {
  ColumnField Field;
  bool Rising;

  std::size_t Words() const noexcept { return Field.Form == Kind::Text ? (Field.Size + 7u) / 8 : 1; }
  std::uint64_t WordOf(const TradeRecord& record, std::size_t word) const noexcept {
    const std::uint64_t value = Field.Form == Kind::Text ? TextWord(record, word) : NumberWord(record);
    return Rising ? value : ~value;
  }
  // A text that ended in this word has nothing in the next one.
  std::uint64_t TextWord(const TradeRecord& record, std::size_t word) const noexcept;
  std::uint64_t NumberWord(const TradeRecord& record) const noexcept;
};

std::uint64_t SortField::TextWord(const TradeRecord& record, std::size_t word) const noexcept {
  const char* text = FieldPlace(record, Field);
  if (word > 0 && std::memchr(text, 0, 8 * word) != nullptr) return 0;
  std::uint64_t bytes = 0;
  if (const std::size_t left = Field.Size - 8 * word; left >= sizeof bytes)
    std::memcpy(&bytes, text + 8 * word, sizeof bytes);
  else
    std::memcpy(&bytes, text + 8 * word, left);
  const std::uint64_t zeros = ZeroBytes(bytes);
  if (zeros != 0) bytes &= (zeros & (0 - zeros)) - 1;
  return __builtin_bswap64(bytes);
}

// Doubles as ordered words: flips the sign bit, of negative ones all bits. -0 equals 0, NaN is last.
std::uint64_t DoubleWord(double value) noexcept {
  if (value != value) return ~std::uint64_t{0};
  const auto bits = std::bit_cast<std::uint64_t>(value + 0.0);
  return (bits & kTopBit) != 0 ? ~bits : bits | kTopBit;
}

std::uint64_t SignedWord(std::int64_t value) noexcept {
  return static_cast<std::uint64_t>(value) ^ kTopBit;
}

std::uint64_t SortField::NumberWord(const TradeRecord& record) const noexcept {
  switch (Field.Form) {
    case Kind::None:
    case Kind::Server:
    case Kind::Text:
      return 0;
    case Kind::Integer:
    case Kind::ProductType:
      return SignedWord(FieldAs<std::int32_t>(record, Field));
    case Kind::Short:
      return SignedWord(FieldAs<std::int16_t>(record, Field));
    case Kind::Double:
      return DoubleWord(FieldAs<double>(record, Field));
    case Kind::Side:
    case Kind::OrderType:
    case Kind::OpenClose:
      return FieldAs<std::uint8_t>(record, Field);
  }
  return 0;
}

std::vector<SortField> FieldsOf(std::span<const SortState> sort) {
  std::vector<SortField> fields;
  for (const SortState& state : sort)
    if (IsTradeColumn(state.Column) && kTradeColumns[state.Column].Order.Form != Kind::None)
      fields.push_back({kTradeColumns[state.Column].Order, state.State == 1});
  return fields;
}

// Sorts ranges of entries word by word: long ones by radix sort, lowest digit first, without bits that are the same in
// all words; short ones by insertion.
class WordSorter {
 public:
  explicit WordSorter(std::vector<SortField> fields) : Fields(std::move(fields)) {}

  void Sort(Entries entries) {
    Other.resize(entries.size());
    SortByWord(entries, {0, 0});
  }

 private:
  static constexpr unsigned kDigitBits = 11;
  static constexpr std::size_t kDigits = std::size_t{1} << kDigitBits;
  static constexpr std::size_t kShort = 64;
  static constexpr std::size_t kAhead = 16;

  struct WordPlace {
    std::size_t Field;
    std::size_t Word;
  };

  void SortByWord(Entries entries, WordPlace at);
  void SortStretches(Entries entries, WordPlace at);
  WordPlace Behind(WordPlace at, std::uint64_t word) const noexcept;
  void SortFetched(Entries entries);
  void FetchWords(Entries entries, WordPlace at) const noexcept;
  void DealAll(Entries entries);
  void Deal(const SortEntry* from, SortEntry* to, std::size_t count, unsigned shift) const noexcept;

  std::vector<SortField> Fields;
  std::vector<SortEntry> Other;
};

// Advances to the next word while all are equal in this one; then sorts each range of equal words by itself.
void WordSorter::SortByWord(Entries entries, WordPlace at) {
  while (entries.size() > 1 && at.Field < Fields.size()) {
    FetchWords(entries, at);
    SortFetched(entries);
    if (entries.front().Word != entries.back().Word) return SortStretches(entries, at);
    at = Behind(at, entries.front().Word);
  }
}

void WordSorter::SortStretches(Entries entries, WordPlace at) {
  for (std::size_t first = 0, last = 1; first < entries.size(); first = last++) {
    while (last < entries.size() && entries[last].Word == entries[first].Word) ++last;
    if (last - first > 1) SortByWord(entries.subspan(first, last - first), Behind(at, entries[first].Word));
  }
}

// Skips the words of a text that has ended.
WordSorter::WordPlace WordSorter::Behind(WordPlace at, std::uint64_t word) const noexcept {
  const SortField& field = Fields[at.Field];
  const bool ended = at.Word + 1 == field.Words() || ((field.Rising ? word : ~word) & 0xFF) == 0;
  return ended ? WordPlace{at.Field + 1, 0} : WordPlace{at.Field, at.Word + 1};
}

void WordSorter::SortFetched(Entries entries) {
  if (entries.size() > kShort) return DealAll(entries);
  for (std::size_t i = 1; i < entries.size(); ++i) {
    const SortEntry entry = entries[i];
    std::size_t place = i;
    for (; place > 0 && entries[place - 1].Word > entry.Word; --place) entries[place] = entries[place - 1];
    entries[place] = entry;
  }
}

void WordSorter::FetchWords(Entries entries, WordPlace at) const noexcept {
  const SortField& by = Fields[at.Field];
  const std::size_t offset = by.Field.Offset + 8 * at.Word;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (i + kAhead < entries.size())
      __builtin_prefetch(reinterpret_cast<const char*>(entries[i + kAhead].Record) + offset);
    entries[i].Word = by.WordOf(*entries[i].Record, at.Word);
  }
}

void WordSorter::DealAll(Entries entries) {
  std::uint64_t different = 0;
  for (const SortEntry& entry : entries) different |= entry.Word ^ entries.front().Word;
  SortEntry* from = entries.data();
  SortEntry* to = Other.data();
  while (different != 0) {
    const auto shift = static_cast<unsigned>(std::countr_zero(different));
    Deal(from, to, entries.size(), shift);
    std::swap(from, to);
    different = shift + kDigitBits < 64 ? different & (~std::uint64_t{0} << (shift + kDigitBits)) : 0;
  }
  if (from != entries.data()) std::copy_n(from, entries.size(), entries.data());
}

void WordSorter::Deal(const SortEntry* from, SortEntry* to, std::size_t count, unsigned shift) const noexcept {
  std::array<std::uint32_t, kDigits> places{};
  const auto digit = [shift](const SortEntry& entry) { return (entry.Word >> shift) & (kDigits - 1); };
  for (std::size_t i = 0; i < count; ++i) ++places[digit(from[i])];
  std::uint32_t place = 0;
  for (std::uint32_t& entry : places) place += std::exchange(entry, place);
  for (std::size_t i = 0; i < count; ++i) to[places[digit(from[i])]++] = from[i];
}

}  // namespace

void SortRows(std::vector<TradeRecord*>& records, std::span<const SortState> sort) {
  std::vector<SortEntry> entries(records.size());
  for (std::size_t i = 0; i < records.size(); ++i) entries[i] = {0, records[i]};
  WordSorter(FieldsOf(sort)).Sort(entries);
  for (std::size_t i = 0; i < records.size(); ++i) records[i] = entries[i].Record;
}

void BookSort::Begin(std::vector<int> states) {
  ColumnStates = std::move(states);
  SortColumns.clear();
  for (std::size_t column = 0; column < ColumnStates.size(); ++column)
    if (ColumnStates[column] != 0) SortColumns.push_back(static_cast<int>(column));
}

SortStep BookSort::Toggle(int column, bool multiple) {
  const auto place = static_cast<std::size_t>(column);
  if (place >= ColumnStates.size()) ColumnStates.resize(place + 1);
  const int state = ColumnStates[place];
  if (multiple && state < 0) {
    std::erase(SortColumns, column);
    ColumnStates[place] = 0;
    return SortStep::Remove;
  }
  if (multiple && state == 0) SortColumns.push_back(column);
  if (!multiple) std::ranges::fill(ColumnStates, 0);
  ColumnStates[place] = state < 1 ? 1 : -1;
  return state < 1 ? SortStep::Rising : SortStep::Falling;
}

bool BookSort::Keep(std::vector<int> states) {
  ColumnStates = std::move(states);
  return std::erase_if(SortColumns, [this](int column) { return StateOf(column) == 0; }) != 0;
}

int BookSort::StateOf(int column) const noexcept {
  const auto place = static_cast<std::size_t>(column);
  return place < ColumnStates.size() ? ColumnStates[place] : 0;
}

std::vector<SortState> BookSort::States() const {
  std::vector<SortState> states;
  for (const int column : SortColumns) states.push_back({column, StateOf(column)});
  return states;
}
