// The two text files in which users lay out exports, as lists of entries: EXCHANGETRADEFORMAT.TXT and
// TRADEBOOKEXPORT.TXT. Not what an entry writes: trade_file_lines.h, exchange_files.h. Lines end in LF or CR LF;
// a byte order mark ahead is passed over. Any thread.
//
//   EXCHANGETRADEFORMAT.TXT: line := Name ( "," DateFormat ( "," more )? )?
//   TRADEBOOKEXPORT.TXT:     line := Name "," Title ( "," DateFormat )?
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

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
