// RecordSearch: finds a text in the cells of a book, record by record.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "grid_ops/columns/cell_text.h"

class BookRows;

// A cell holds a text if its shown text (cell_text.h) contains it, ignoring case. No cell holds an empty text.
//
// Holds costs about as much as reading the record. The fields of the text columns are searched in place, sixteen bytes
// at a time, for the first and last character of the text; what matches there is compared whole and has to lie within
// the text of one column. Codes are looked up in a table of the codes whose names hold the text. A number can hold only
// digits and the like; of most columns few values occur, so the answers of the last ones are kept by value.
class RecordSearch {
 public:
  // Unknown columns hold nothing.
  RecordSearch(const std::wstring& text, std::span<const int> columns, std::string_view serverName);

  // One of the columns holds the text.
  bool Holds(const TradeRecord& record);
  // The same for one column, in the plain way: makes the text of the cell.
  bool Holds(const TradeRecord& record, int column) const;
  // Prefetches what Holds reads of the record.
  void Prefetch(const TradeRecord* record) const noexcept {
    for (const std::uint16_t line : Lines) __builtin_prefetch(reinterpret_cast<const char*>(record) + line);
  }

 private:
  // Bytes of a record; End is excluded.
  struct Bytes {
    std::uint16_t Begin;
    std::uint16_t End;
  };
  // A field of text. Columns show all of it, its time of day, or both.
  struct TextField {
    Bytes Place;
    bool Whole;
    bool Clock;
  };
  struct CodeField {
    ColumnField Field;
    std::bitset<256> Holding;  // by code; codes of several bytes by CodeIndex
  };
  struct NumberField {
    struct Known {
      std::uint64_t Bits;
      bool Held;
    };
    int Column;
    ColumnField Field;
    unsigned Shift;              // of the hash
    std::vector<Known> Answers;  // by the hash of the bits; all entries are true from the begin
  };
  // The bytes that are one character of the text, and perhaps a few others: they are alike but for the ignored bits.
  struct Anchor {
    char Ignored = 0;
    char Value = 0;  // with all of those bits
  };

  void PrepareBytes();
  Anchor AnchorOf(wchar_t character) const;
  void AddColumn(int column);
  void AddText(const ColumnField& field, bool clock);
  void AddCodes(int column, const ColumnField& field);
  void AddNumber(int column, const ColumnField& field);
  void JoinSpans();
  bool CanBeNumber(ColumnField::Kind form) const;
  static std::size_t CodeIndex(const TradeRecord& record, const ColumnField& field) noexcept;

  bool HoldsText(std::string_view text) const;
  bool HoldsTextField(const TradeRecord& record) const noexcept;
  bool HoldsNumber(const TradeRecord& record, NumberField& number) const;
  bool HoldsInteger(std::int32_t value) const noexcept;
  bool IsHeldIn(const char* record, std::size_t from, std::size_t to) const noexcept;
  bool IsAt(const char* place) const noexcept;
  bool IsInTextAt(const char* record, std::size_t at) const noexcept;

  std::wstring Wanted;  // in lower case
  std::string Server;
  std::vector<int> Columns;
  std::array<wchar_t, 256> LowerOf{};  // the character of each byte
  bool Plain = true;                   // else each byte is not one character: cells are made and compared
  bool Always = false;                 // a column that is alike in all rows holds the text
  Anchor First, Last;
  std::int64_t LeastInteger = 0;  // no integer nearer to zero has as many digits as the text
  std::vector<TextField> Texts;
  std::array<std::int8_t, sizeof(TradeRecord)> TextAt{};  // the index in Texts of each byte, -1 for none
  std::vector<Bytes> Spans;                               // the bytes of Texts, joined
  std::vector<CodeField> Codes;
  std::vector<NumberField> Numbers;
  std::vector<std::uint16_t> Lines;
};

// The first of that many rows from the row on, downwards with step 1 or upwards with -1, whose record holds the text;
// -1 for none. A row without a record holds nothing. All of these rows must exist.
int FindRow(const BookRows& rows, RecordSearch& search, int row, int step, int count);
