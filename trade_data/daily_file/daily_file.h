// DailyFile: the comma-separated file of the day's trades that other programs read. Every failure is silent.
//
//   file    := header ( CR LF line )*     no line end after the last line
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

// A column of the daily file. Its names differ from those of the grid.
struct DailyColumn {
  std::string_view Name;
  // Appends the value of the record. Text is not quoted or escaped.
  void (*Append)(LineBuffer& line, const TradeRecord& record, std::string_view serverName);
};

// The most characters that any column writes.
constexpr std::size_t LongestDailyValue(std::string_view serverName) {
  return std::max({sizeof TradeRecord::ReferenceText, kLongestDouble, serverName.size()});
}

// The column of exactly that name, or null.
const DailyColumn* FindDailyColumn(std::string_view name) noexcept;

class DailyFile {
 public:
  DailyFile() { AutoStream.rdbuf()->pubsetbuf(StreamBuffer, sizeof StreamBuffer); }

  // Starts Trade<date>.CSV in the folder with the columns of its TradeHeaderFile.txt, which are added to the known
  // ones. On std::bad_alloc nothing has changed. Intentional: a second call finds the stream open and fails it, so that
  // nothing is written any longer, and the file does not change with the date. Lines that are not flushed reach the disk
  // when the file is closed.
  void OpenDailyFile(const std::filesystem::path& folder, std::string_view date, std::string_view serverName);

  // No-op before the first opening and after a failure. Does not allocate.
  void WriteTradeLine(const TradeRecord& record, std::string_view serverName);
  void Flush();

 private:
  struct NamedColumn {
    std::string Name;
    const DailyColumn* Column;  // null for an unknown name, which is in the header and writes nothing
  };

  std::vector<NamedColumn> ReadColumns(const std::filesystem::path& headerFile) const;
  static std::size_t LongestLine(std::size_t columns, std::string_view serverName);
  void WriteHeader();

  char StreamBuffer[8192];  // of AutoStream, which otherwise allocates one after the file is open
  std::ofstream AutoStream;
  std::vector<NamedColumn> AutoColumns;
  LineBuffer Line;
};
