// Splitting of one CSV line into its fields. Not the reading of lines (csv_file.h) nor the meaning of a field
// (csv_fields.h). Pure; any thread.
//
//   line   := field ("," field)*
//   field  := plain | '"' (any character but '"', or '""' for one '"')* '"'
//   plain  := characters other than "," and not beginning with '"'
#pragma once

#include <string>
#include <string_view>
#include <vector>

// Puts the fields of the line into fields, whose texts are reused from line to line, and returns how many there are.
// 0, with the reason in reason, for a line that breaks the grammar above. An empty line has one empty field.
std::size_t SplitCsvLine(std::string_view line, std::vector<std::string>& fields, std::string& reason);
