#include "tests/spreadsheet/spreadsheet.h"

#include "tests/support/programs.h"

namespace {

// Comma, quote, UTF-8, from the first line; all texts quoted, cells as shown.
constexpr const char* kOutput = "'csv:Text - txt - csv (StarCalc):44,34,76,1,,0,true,true,false'";
constexpr const char* kQuotedAsText = " --infilter='Text - txt - csv (StarCalc):44,34,76,1,,0,true,true'";

// Takes a cell with the separator behind it; the text is at its end or at a line end then.
SpreadsheetCell TakeCell(std::string_view& text) {
  SpreadsheetCell cell{text.starts_with('"'), {}};
  bool inQuotes = false;
  std::size_t at = 0;
  for (; at < text.size() && (inQuotes || (text[at] != ',' && text[at] != '\n')); ++at) {
    const bool isDoubled = inQuotes && text.substr(at, 2) == "\"\"";
    if (text[at] != '"' || isDoubled) cell.Shown += text[at];
    if (isDoubled)
      ++at;
    else if (text[at] == '"')
      inQuotes = !inQuotes;
  }
  text.remove_prefix(at);
  return cell;
}

}  // namespace

bool HasSpreadsheet() {
  return RunCommand("command -v soffice >/dev/null 2>&1") == 0;
}

bool OpenInSpreadsheet(const std::vector<std::filesystem::path>& files, CsvImport import,
                       const std::filesystem::path& out) {
  std::string command = "soffice '-env:UserInstallation=file://" + (out / "profile").string() + "' --headless";
  if (import == CsvImport::QuotedAsText) command += kQuotedAsText;
  command += std::string(" --convert-to ") + kOutput + " --outdir " + Quoted(out);
  for (const auto& file : files) command += " " + Quoted(file);
  return RunCommand(command + " >" + Quoted(out / "log") + " 2>&1") == 0;
}

SpreadsheetCells ReadSpreadsheetCells(const std::filesystem::path& file) {
  const std::string bytes = ReadFile(file);
  std::string_view rest = bytes;
  SpreadsheetCells cells;
  while (!rest.empty()) {
    cells.emplace_back().push_back(TakeCell(rest));
    while (rest.starts_with(',')) {
      rest.remove_prefix(1);
      cells.back().push_back(TakeCell(rest));
    }
    if (!rest.empty()) rest.remove_prefix(1);
  }
  return cells;
}
