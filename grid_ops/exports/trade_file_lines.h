// The two description files in which users lay out exports, and the lines of the exchange trade files that one of them
// describes.
//
//   EXCHANGETRADEFORMAT.TXT: line := Name ( "," DateFormat ( "," more )? )?
//   TRADEBOOKEXPORT.TXT:     line := Name "," Title ( "," DateFormat )?
//
// Lines end in LF or CR LF; a byte order mark at the start is skipped.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/trade_file_text.h"

struct DescriptionEntry {
  std::string Name;
  std::string Title;
  std::string DateFormat;
  bool operator==(const DescriptionEntry&) const = default;
};
using DescriptionList = std::vector<DescriptionEntry>;

// Ignores empty lines; a line that starts with a comma is an entry without a name. The title stays empty. Intentional:
// the date format is read and has no effect.
DescriptionList ParseExchangeFormat(std::string_view text);

// Ignores all lines but those of two or three non-empty parts.
DescriptionList ParseBookExport(std::string_view text);

// Reads the file in the folder; empty if it cannot be read.
DescriptionList ReadExchangeFormat(const std::filesystem::path& folder);
DescriptionList ReadBookExport(const std::filesystem::path& folder);

// Column indexes by title, case-sensitive: of all columns, or of the visible ones.
using ColumnIndexes = std::map<std::string, int, std::less<>>;
ColumnIndexes IndexColumns(std::span<const GridColumn> columns, bool visibleOnly);

// A name in a description file that is not a column. Intentional: its text ends in a comma, even at the end of a line.
struct NamedField {
  enum class Kind : std::uint8_t { Fixed, SecurityName, BookType, Client };
  std::string_view Name;
  Kind How;
  std::string_view FO;  // of a fixed field
  std::string_view CM;
};
inline constexpr NamedField kNamedFields[] = {
    {"Security name", NamedField::Kind::SecurityName, {}, {}},  // padded to 25
    {"Book Type", NamedField::Kind::BookType, {}, {}},          // see kBookTypes
    {"Market Type", NamedField::Kind::Fixed, "1 ,", "1 ,"},
    {"Pro/Client", NamedField::Kind::Client, {}, {}},  // the client is "OWN" or another
    {"Branch No", NamedField::Kind::Fixed, "1  ,", "1  ,"},
    {"Trade Status", NamedField::Kind::Fixed, "11,", "11,"},
    {"Opposite Broker Id", NamedField::Kind::Fixed, "Nil  ,", "Nil  ,"},
    {"Cover/Uncover Flag", NamedField::Kind::Fixed, "UNCOVER,", "0   ,7 ,"},
};

// Two fields in one. An unlisted order type writes neither.
struct BookType {
  std::string_view OrderType;
  std::string_view FO;
  std::string_view CM;
};
inline constexpr BookType kBookTypes[] = {
    {"Market", "1 ,RL ,", "0 ,1 ,"},     {"Limit", "1 ,RL ,", "0 ,1 ,"},
    {"MIT", "2 ,MT ,", "0 ,2 ,"},        {"StopLimit", "2 ,SL ,", "0 ,3 ,"},
    {"StopMarket", "3 ,ST ,", "0 ,3 ,"}, {"NegotiatedDealOrder", "4 ,NT ,", "0 , ,"},
};

// True for the exchanges of the cash-market file; all others go to the file of derivatives.
constexpr bool IsCash(std::string_view exchange) {
  return exchange == "NSECM" || exchange == "BSECM";
}

// Writes the line of a trade as the entries describe it. The constructor looks up every name once and turns the entry
// into a step; a name that is neither a column nor a named field gives none.
class TradeFileLines {
 public:
  TradeFileLines(const DescriptionList& entries, const ColumnIndexes& columns, const PriceDivisors& divisors);

  // Appends the fields of the trade, without a line end. Requires room for Longest characters.
  void Append(LineBuffer& line, bool isCash, std::string_view server, const TradeRecord& record);
  std::size_t Longest(std::string_view server) const noexcept {
    return Steps.size() * (LongestTradeFileCell(server, {}) + 1);
  }

 private:
  struct Step {
    const NamedField* Named;  // null for a column
    FileCellPrinter FO, CM;   // of a column
    bool Comma;               // after a column's cell
  };

  const PriceDivisors& Divisors;
  std::vector<Step> Steps;
  StoredTimeText Times;
};
