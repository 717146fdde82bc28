// DailyFile: the comma-separated file of the day's trades that outside programs follow. Every failure is silent.
//
//   file    := header ( CR LF line )*     no line end behind the last line
//   header  := ( name "," )*              every name of the column list
//   line    := ( value "," )*             only for names that are columns
#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "trade_data/daily_file/line_buffer.h"
#include "trade_data/records/trade_record.h"

// The columns of the daily file: their names, a vocabulary of the file's own, and how each writes its value.
struct DailyColumn {
  std::string_view Name;
  // Appends the column's value for the record. No text is quoted or escaped.
  void (*Append)(LineBuffer& line, const TradeRecord& record, std::string_view serverName);
};

// The most characters that any column writes.
constexpr std::size_t LongestDailyValue(std::string_view serverName) {
  return std::max({sizeof TradeRecord::ReferenceText, kLongestDouble, serverName.size()});
}

// The column of that name, compared whole and case-sensitively; null for a name that is none.
const DailyColumn* FindDailyColumn(std::string_view name) noexcept;

class DailyFile {
 public:
  DailyFile() { AutoStream.rdbuf()->pubsetbuf(StreamBuffer, sizeof StreamBuffer); }

  // Starts Trade<date>.CSV in the folder with the columns of its TradeHeaderFile.txt, which are added to those known.
  // Nothing changes when memory runs out. A second call in the life of the module finds the stream open: that fails the
  // stream, and nothing is written from then on. Meant so, and so is that the file does not change with the date. Lines
  // written before and not flushed reach the disk when the file is closed.
  void OpenDailyFile(const std::filesystem::path& folder, std::string_view date, std::string_view serverName);

  // Before the first opening, and after any failure, this has no effect. Takes no memory.
  void WriteTradeLine(const TradeRecord& record, std::string_view serverName);
  void Flush();

 private:
  struct NamedColumn {
    std::string Name;
    const DailyColumn* Column;  // null for a name that is no column: it stands in the header and writes nothing
  };

  std::vector<NamedColumn> ReadColumns(const std::filesystem::path& headerFile) const;
  static std::size_t LongestLine(std::size_t columns, std::string_view serverName);
  void WriteHeader();

  char StreamBuffer[8192];  // of AutoStream, which would take its own only once the file is open
  std::ofstream AutoStream;
  std::vector<NamedColumn> AutoColumns;
  LineBuffer Line;
};
