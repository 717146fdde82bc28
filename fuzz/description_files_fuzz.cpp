#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_functions.h"
#include "grid_ops/exports/exchange_files.h"
#include "tests/grid_ops/export_sample.h"

namespace {

using Parts = std::vector<std::string>;

// The lines of a file cut at commas, character by character, without the return before a line end.
std::vector<Parts> PartsOfLines(std::string_view text) {
  std::vector<Parts> lines(1, {""});
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isLineEnd = i + 1 == text.size() || text[i + 1] == '\n';
    if (text[i] == '\n')
      lines.push_back({""});
    else if (text[i] == ',')
      lines.back().push_back("");
    else if (text[i] != '\r' || !isLineEnd)
      lines.back().back() += text[i];
  }
  return lines;
}

DescriptionList SlowExchangeFormat(std::string_view text) {
  DescriptionList entries;
  for (const auto& parts : PartsOfLines(text))
    if (parts != Parts{""}) entries.push_back({parts[0], "", parts.size() > 1 ? parts[1] : ""});
  return entries;
}

DescriptionList SlowBookExport(std::string_view text) {
  DescriptionList entries;
  for (const auto& parts : PartsOfLines(text))
    if ((parts.size() == 2 || parts.size() == 3) && std::count(parts.begin(), parts.end(), "") == 0)
      entries.push_back({parts[0], parts[1], parts.size() == 3 ? parts[2] : ""});
  return entries;
}

std::string LineOf(const DescriptionList& entries, bool isCash) {
  static const TradeRecord record = FullTrade();
  static const ColumnIndexes columns = IndexColumns(ColumnsOfGrid(), false);
  const PriceDivisors divisors;
  TradeFileLines lines(entries, columns, divisors);
  LineBuffer line;
  line.Start(lines.Longest("S"));
  lines.Append(line, isCash, "S", record);
  RequireProperty(line.Text().size() <= lines.Longest("S"), "a line is no longer than it says");
  return std::string(line.Text());
}

// What an entry writes depends only on itself and on whether more follow.
void CheckLines(const DescriptionList& entries) {
  if (entries.empty()) return;
  const DescriptionList rest(entries.begin() + 1, entries.end());
  DescriptionList first{entries[0]};
  if (!rest.empty()) first.push_back({"no such name", "", ""});
  for (const bool isCash : {false, true})
    RequireProperty(LineOf(entries, isCash) == LineOf(first, isCash) + LineOf(rest, isCash),
                    "a line is what its entries write");
}

}  // namespace

int FuzzDescriptionFiles(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const DescriptionList exchange = ParseExchangeFormat(text), book = ParseBookExport(text);
  RequireProperty(exchange == SlowExchangeFormat(text), "an exchange format reads line by line");
  RequireProperty(book == SlowBookExport(text), "a book export reads line by line");
  CheckLines(exchange);
  CheckLines(book);
  return 0;
}
