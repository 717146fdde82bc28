// Which trades a book shows. FilterKey: the exchange and security of a book of one security. ColumnFilter: the
// condition of one field of the filter bar, prepared once for many records. FilterBar: the fields of a book.
#pragma once

#include <bitset>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "grid_ops/columns/cell_text.h"

// The exchange and security of a book of one security.
struct FilterKey {
  char Exchange[49];
  char SecurityID[49];

  // Compares bytes up to the NUL, case-sensitive; ignores a linked master.
  bool Matches(const TradeRecord& record) const noexcept {
    return std::strncmp(record.Exchange, Exchange, sizeof Exchange) == 0 &&
           std::strncmp(record.SecurityID, SecurityID, sizeof SecurityID) == 0;
  }
  // Both parts are non-empty.
  bool Complete() const noexcept { return Exchange[0] != '\0' && SecurityID[0] != '\0'; }
};
static_assert(sizeof(FilterKey) == 98);

// A text matches a cell that contains it, in lower case. "or" anywhere in the text, even within a word, splits it into
// pieces: the cell must contain the last one and none of the others. Intentional: "buy or sell" finds the sells, and a
// text that ends in "or" matches nothing.
// Only StrikePrice is compared as a whole number: by the first of "<", ">" and "!" in the text, else for equality; "="
// has no effect.
class ColumnFilter {
 public:
  // Unknown columns accept every record.
  ColumnFilter(int column, const std::wstring& filterText);

  // Allocates nothing: no trade can fail here.
  bool Accepts(std::string_view serverName, const TradeRecord& record) const noexcept;
  // Prefetches what Accepts reads of the record.
  void Prefetch(const TradeRecord* record) const noexcept {
    __builtin_prefetch(reinterpret_cast<const char*>(record) + Field.Offset);
    __builtin_prefetch(reinterpret_cast<const char*>(record) + Field.Offset + Field.Size - 1);
  }

 private:
  // Field: the stored text of the field; Cell: its text in the grid.
  enum class Test : std::uint8_t { Always, Never, Field, Cell, Code, Less, Greater, Other, Equal };

  // A piece of the filter in lower case. Cells of plain ASCII are compared with Ascii, which is empty if the piece is
  // not plain.
  struct Piece {
    std::wstring Wide;
    std::string Ascii;
    bool IsAscii = false;
  };

  void PrepareText(const std::wstring& filterText, Test test);
  void PrepareNumber(const std::wstring& filterText);
  void PrepareCodes();
  // The cell ends at its first NUL.
  bool AcceptsText(std::string_view cell) const noexcept;
  bool AcceptsWide(std::string_view cell) const noexcept;

  Test Compare = Test::Always;
  int Column = -1;
  ColumnField Field{ColumnField::Kind::None, 0, 1};
  std::vector<Piece> Refused;  // none of these may be held
  Piece Wanted;
  std::int32_t Number = 0;
  std::bitset<256> AcceptedCodes;  // of a column whose cells are names of one-byte codes
};

// Non-zero on a match: one record against one text. A walk prepares a ColumnFilter instead.
int MatchFilter(std::string_view serverName, const TradeRecord& record, int column, const std::wstring& filterText);

// The texts in a book's filter bar and the filters made of them.
class FilterBar {
 public:
  // Sets the text of a column's field, empty for none. False if that changes nothing, or if the column is below 0 or
  // above the count of columns. Intentional: the count itself is a column that accepts every record.
  bool Change(int column, const std::wstring& text);
  void Clear() noexcept { Fields.clear(); }

  // Some field has a text.
  bool Active() const noexcept { return !Fields.empty(); }
  // In lower case.
  std::wstring TextOf(int column) const;

  // Every field accepts the record.
  bool Accepts(std::string_view serverName, const TradeRecord& record) const noexcept {
    for (const Field& field : Fields)
      if (!field.Filter.Accepts(serverName, record)) return false;
    return true;
  }
  void Prefetch(const TradeRecord* record) const noexcept {
    for (const Field& field : Fields) field.Filter.Prefetch(record);
  }

 private:
  struct Field {
    int Column;
    std::wstring Text;  // never empty
    ColumnFilter Filter;
  };
  std::vector<Field> Fields;  // in the order in which they were filled
};
