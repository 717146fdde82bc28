// ColumnFilter: what one field of the filter bar asks of a column, prepared once and then put to many records. Pure;
// once made, any thread may ask it.
//
// A text is compared in lower case and matches where the cell holds it. "or" anywhere in it, also within a word, cuts
// it into pieces: the last must be held by the cell, and none of those before it may. Meant so: "buy or sell" finds the
// sells. A text that ends in "or" matches nothing.
// StrikePrice alone is compared as a whole number, by the first of "<", ">" and "!" that the text holds, else for
// equality; a sign of equality changes nothing.
#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "grid_ops/columns/cell_text.h"

class ColumnFilter {
 public:
  // A column that no grid shows, or that is none, accepts every record.
  ColumnFilter(int column, const std::wstring& filterText);

  // Takes no memory: a trade that comes in cannot fail here.
  bool Accepts(std::string_view serverName, const TradeRecord& record) const noexcept;
  // Asks for the part of the record that Accepts reads.
  void Prefetch(const TradeRecord* record) const noexcept {
    __builtin_prefetch(reinterpret_cast<const char*>(record) + Field.Offset);
    __builtin_prefetch(reinterpret_cast<const char*>(record) + Field.Offset + Field.Size - 1);
  }

 private:
  // Field: the text of the field as it is stored; Cell: the text that the grid makes of it.
  enum class Test : std::uint8_t { Always, Never, Field, Cell, Code, Less, Greater, Other, Equal };

  // A piece of the filter in lower case; cells of plain ASCII are compared with Ascii, which is empty where the piece
  // itself is not plain.
  struct Piece {
    std::wstring Wide;
    std::string Ascii;
    bool IsAscii = false;
  };

  void PrepareText(const std::wstring& filterText, Test test);
  void PrepareNumber(const std::wstring& filterText);
  void PrepareCodes();
  // The cell ends at its first NUL, if it holds one.
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

// FilterBar: the texts in a book's filter bar and the filters made of them.
class FilterBar {
 public:
  // Takes the text of a column's field, empty for none; false when that changes nothing, be it that the column is below
  // 0 or above the count of columns. The count itself passes as a column, and accepts every record: meant so.
  bool Change(int column, const std::wstring& text);
  void Clear() noexcept { Fields.clear(); }

  // A field holds text.
  bool Active() const noexcept { return !Fields.empty(); }
  // In lower case; empty where the field is.
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
