// The lines of the exchange trade files: what a description file's names write for one trade. One thread at a time.
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

// The two text files in which users lay out exports, as lists of entries: EXCHANGETRADEFORMAT.TXT and
// TRADEBOOKEXPORT.TXT. Lines end in LF or CR LF; a byte order mark ahead is passed over.
//
//   EXCHANGETRADEFORMAT.TXT: line := Name ( "," DateFormat ( "," more )? )?
//   TRADEBOOKEXPORT.TXT:     line := Name "," Title ( "," DateFormat )?
struct DescriptionEntry {
  std::string Name;
  std::string Title;
  std::string DateFormat;
  bool operator==(const DescriptionEntry&) const = default;
};
using DescriptionList = std::vector<DescriptionEntry>;

// An empty line is no entry; a line that starts with a comma is one without a name. The date format is read and has no
// effect: meant so. The title stays empty.
DescriptionList ParseExchangeFormat(std::string_view text);

// Only lines of two or three parts, none of them empty, are entries.
DescriptionList ParseBookExport(std::string_view text);

// From the file of the folder; a file that cannot be read is an empty list.
DescriptionList ReadExchangeFormat(const std::filesystem::path& folder);
DescriptionList ReadBookExport(const std::filesystem::path& folder);

// Column indexes by the titles of a grid, case-sensitive: of all columns, or of those that are visible.
using ColumnIndexes = std::map<std::string, int, std::less<>>;
ColumnIndexes IndexColumns(std::span<const GridColumn> columns, bool visibleOnly);

// A name of a description file that is no column. Its text ends in a comma, also at the end of a line: meant so.
struct NamedField {
  enum class Kind : std::uint8_t { Fixed, SecurityName, BookType, Client };
  std::string_view Name;
  Kind How;
  std::string_view FO;  // of a fixed field
  std::string_view CM;
};
inline constexpr NamedField kNamedFields[] = {
    {"Security name", NamedField::Kind::SecurityName, {}, {}},  // padded to 25
    {"Book Type", NamedField::Kind::BookType, {}, {}},          // by order type: kBookTypes
    {"Market Type", NamedField::Kind::Fixed, "1 ,", "1 ,"},
    {"Pro/Client", NamedField::Kind::Client, {}, {}},  // the client "OWN" or any other
    {"Branch No", NamedField::Kind::Fixed, "1  ,", "1  ,"},
    {"Trade Status", NamedField::Kind::Fixed, "11,", "11,"},
    {"Opposite Broker Id", NamedField::Kind::Fixed, "Nil  ,", "Nil  ,"},
    {"Cover/Uncover Flag", NamedField::Kind::Fixed, "UNCOVER,", "0   ,7 ,"},
};

// Two fields at once; an order type that is not here writes neither.
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

// Trades of these exchanges go to the file of the cash market, all others to that of derivatives.
constexpr bool IsCash(std::string_view exchange) {
  return exchange == "NSECM" || exchange == "BSECM";
}

// Promises: the line of each trade as the entries say. Works by looking up every name once: what is left of an entry is
// a step, and a name that is neither a column nor a named field leaves none.
class TradeFileLines {
 public:
  TradeFileLines(const DescriptionList& entries, const ColumnIndexes& columns, const PriceDivisors& divisors);

  // The trade's fields at the end of the line, without a line end. The line has room for Longest characters.
  void Append(LineBuffer& line, bool isCash, std::string_view server, const TradeRecord& record);
  std::size_t Longest(std::string_view server) const noexcept {
    return Steps.size() * (LongestTradeFileCell(server, {}) + 1);
  }

 private:
  struct Step {
    const NamedField* Named;  // null for a column
    FileCellPrinter FO, CM;   // of a column
    bool Comma;               // behind a column's cell
  };

  const PriceDivisors& Divisors;
  std::vector<Step> Steps;
  StoredTimeText Times;
};
