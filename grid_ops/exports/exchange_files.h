// The trade files of the commands "Exchange Trade Format" and "Manual Export", and the two description files in which
// users lay them out. Failures are silent: a file that cannot be opened or written loses its text.
//
//   ExchangeTradeFormat/FO/<date>TRD.txt, ExchangeTradeFormat/CM/<date>TRD.txt := ( fields CR LF )*
//   the file of Manual Export                                                  := header ( CR LF line )*
//   EXCHANGETRADEFORMAT.TXT: line := Name ( "," DateFormat ( "," more )? )?
//   TRADEBOOKEXPORT.TXT:     line := Name "," Title ( "," DateFormat )?
//
// Lines of description files end in LF or CR LF; a byte order mark at the start is skipped.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/export_file.h"
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

struct TradeFileRun {
  std::span<const GridColumn> Columns;
  const ServerTrades& Trades;
  const PriceDivisors& Divisors;
  std::filesystem::path GridFolder;    // the current folder when the grid was created
  std::filesystem::path PluginFolder;  // the current folder when the plug-in was loaded
  std::int64_t Now = 0;                // the date of the files
};

// Writes every trade of the cache to the file of derivatives or of the cash market in the grid's folder, by its
// EXCHANGETRADEFORMAT.TXT. Both files are created. Without a description file each trade is an empty line.
void WriteExchangeTradeFiles(const TradeFileRun& run, const ExportProgress& progress = {});

// True if the trade has a row that the grid shows. Intentional: the plug-in has no index of rows and passes an empty
// test, so that its exchange branch always leaves two empty files.
using RowTest = std::function<bool(std::string_view server, std::int32_t tradeId)>;

// With exchangeFormat the exchange branch: the two files in the plug-in's folder, with visible columns and trades with
// a row; the path is unused. Otherwise the free branch: every trade of the cache to the path, by TRADEBOOKEXPORT.TXT in
// the grid's folder; without it the file stays empty.
void WriteManualExport(const TradeFileRun& run, bool exchangeFormat, const std::filesystem::path& path,
                       const RowTest& hasVisibleRow, const ExportProgress& progress = {});

// The first four characters of the local date, and "TRD.txt". The manual pattern is that of the exchange branch.
inline constexpr const char *kExchangeDate = "MMddyy", *kManualDate = "ddMMyy";
std::string TradeFileName(const char* datePattern, std::int64_t now);

// The reports, even if no file could be written. Intentional: the spelling.
inline constexpr std::wstring_view kExchangeReport = L"Exchange Trade File Sucessfully Write";
std::wstring ManualExchangeReport(std::int64_t now);
