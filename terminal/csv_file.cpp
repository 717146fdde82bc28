#include "terminal/csv_file.h"

#include <algorithm>
#include <utility>

#include "foundations/text_tools.h"
#include "terminal/csv_line.h"
#include "terminal/terminal_error.h"

namespace {

constexpr std::size_t kLongestLine = 65536;

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ",") + name;
  return text;
}

}  // namespace

CCsvFile::CCsvFile(std::filesystem::path path, std::vector<std::string> columns, CBadLines& badLines)
    : Bytes(std::move(path)), Columns(std::move(columns)), BadLines(badLines) {
  CheckHeader();
}

void CCsvFile::CheckHeader() {
  if (Bytes.Peek(kByteOrderMark.size()).starts_with(kByteOrderMark)) Bytes.Drop(kByteOrderMark.size());
  std::string_view line;
  const std::string header = Joined(Columns);
  if (!NextLine(line) || line != header)
    throw TerminalError(ExitCode::File, PathText(Bytes.Path()) + ":1: the header must be \"" + header + "\"");
}

bool CCsvFile::Next() {
  std::string_view line;
  while (NextLine(line)) {
    if (line.empty()) continue;
    const std::size_t count = SplitCsvLine(line, Fields, Reason);
    if (count == Columns.size()) return true;
    if (count != 0)
      Reason = std::to_string(count) + " fields where " + std::to_string(Columns.size()) + " are expected";
    Report(Reason);
  }
  return false;
}

// Where the line at the front of the window ends: at a line feed, at the end of the file, or further on than any line
// may be long.
std::size_t CCsvFile::LineEnd() {
  for (std::size_t searched = 0;;) {
    const std::string_view window = Bytes.Peek(searched + 1);
    const std::size_t end = window.find('\n', searched);
    if (end != std::string_view::npos) return end;
    if (window.size() == searched || searched > kLongestLine) return window.size();
    searched = window.size();
  }
}

// The line lives until the next call.
bool CCsvFile::NextLine(std::string_view& line) {
  for (;;) {
    const std::size_t end = LineEnd();
    const std::string_view window = Bytes.Peek(0);
    if (window.empty()) return false;
    ++Line;
    if (end <= kLongestLine) {
      line = window.substr(0, end);
      Bytes.Drop(std::min(end + 1, window.size()));
      if (line.ends_with('\r')) line.remove_suffix(1);
      return true;
    }
    Report("the line is longer than " + std::to_string(kLongestLine) + " bytes");
    DropLine();
  }
}

// A line too long to be kept is dropped block by block.
void CCsvFile::DropLine() {
  for (;;) {
    const std::string_view window = Bytes.Peek(1);
    const std::size_t end = window.find('\n');
    Bytes.Drop(end == std::string_view::npos ? window.size() : end + 1);
    if (end != std::string_view::npos || window.empty()) return;
  }
}

void CCsvFile::ReportField(std::size_t column, const char* expected) {
  Report(Columns[column] + " \"" + Fields[column] + "\" is not " + expected);
}
