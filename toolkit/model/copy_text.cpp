#include "toolkit/model/copy_text.h"

#include <algorithm>
#include <vector>

#include "foundations/text_tools.h"

namespace {

constexpr std::wstring_view kDigits = L"0123456789";
constexpr std::wstring_view kNumberCharacters = L"0123456789.,";
constexpr std::size_t kExactDigits = 15;  // of a number in a spreadsheet

char32_t CodeOf(wchar_t character) {
  return static_cast<char32_t>(character);
}
bool IsControl(wchar_t character) {
  return CodeOf(character) < U' ' || character == 0x7F;
}
bool Holds(std::wstring_view text, std::wstring_view only) {
  return text.find_first_not_of(only) == std::wstring_view::npos;
}

// Spreadsheets convert cells to numbers and formulas if they can. This damages identifiers: long digits, leading zeros,
// an E among digits. And a text from outside must not run as a formula.
bool MustStayText(std::wstring_view cell) {
  while (!cell.empty() && CodeOf(cell.front()) <= U' ') cell.remove_prefix(1);
  if (cell.empty()) return false;
  if (cell.front() == L'=' || cell.front() == L'@') return true;
  if (cell.front() == L'+' || cell.front() == L'-') return !Holds(cell.substr(1), kNumberCharacters);
  const std::size_t digits = std::min(cell.find_first_not_of(kDigits), cell.size());
  if (digits == 0) return false;
  if (digits == cell.size()) return digits > kExactDigits || (digits > 1 && cell.front() == L'0');
  return (cell[digits] == L'E' || cell[digits] == L'e') && Holds(cell.substr(digits + 1), kDigits);
}

void AppendEscaped(std::string& html, std::wstring_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char32_t code = NextCharacter(text, at);
    switch (code) {
      case U'&':
        html += "&amp;";
        break;
      case U'<':
        html += "&lt;";
        break;
      case U'>':
        html += "&gt;";
        break;
      case U'"':
        html += "&quot;";
        break;
      default:
        AppendUtf8(html, code < U' ' || code == 0x7F ? U' ' : code);
    }
  }
}

void AppendText(std::wstring& text, std::wstring_view cell) {
  const std::size_t from = text.size();
  text += cell;
  std::replace_if(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), IsControl, L' ');
}

// The opening tags of the cells of a column: for cells that may be numbers, and for cells that must stay text.
struct ColumnTags {
  int Column;
  std::string Plain;
  std::string AsText;
};

std::string AlignmentOf(int align) {
  return align == 1 ? " align=\"right\"" : align == 2 ? " align=\"center\"" : "";
}

// Some spreadsheets read the attribute, others the style.
constexpr const char* kAsText = R"( sdnum="1033;0;@" style='mso-number-format:"\@"')";

std::vector<ColumnTags> TagsOf(const CQORPGridColumnsInfo& columns) {
  std::vector<ColumnTags> tags;
  for (const int column : columns.DisplayColumns()) {
    const std::string open = "<td" + AlignmentOf(columns.GetColumnAlign(column));
    tags.push_back({column, open + ">", open + kAsText + ">"});
  }
  return tags;
}

std::vector<RowRange> RangesOf(const RowSelection& selection) {
  if (!selection.GetRanges().empty()) return selection.GetRanges();
  return {{0, selection.GetRows() - 1}};
}

// Calls perRow(row) from top to bottom.
template <typename PerRow>
void ForEachRow(const RowSelection& selection, PerRow perRow) {
  for (const RowRange& range : RangesOf(selection))
    for (int row = range.First; row <= range.Last; ++row) perRow(row);
}

void AppendHtmlCell(std::string& html, const ColumnTags& tags, std::wstring_view cell) {
  html += MustStayText(cell) ? tags.AsText : tags.Plain;
  AppendEscaped(html, cell);
  html += "</td>";
}

}  // namespace

CopiedRows CopyAsTextAndHtml(const RowsToCopy& rows, std::wstring_view lineEnd) {
  const std::vector<ColumnTags> columns = TagsOf(rows.Columns);
  CopiedRows copied{{}, "<table>"};
  ForEachRow(rows.Selection, [&](int row) {
    copied.Html += "<tr>";
    for (const ColumnTags& tags : columns) {
      const std::wstring_view cell = rows.Cell(row, tags.Column);
      if (&tags != columns.data()) copied.Text += L'\t';
      AppendText(copied.Text, cell);
      AppendHtmlCell(copied.Html, tags, cell);
    }
    copied.Text += lineEnd;
    copied.Html += "</tr>";
  });
  copied.Html += "</table>";
  return copied;
}

std::string CopyAsHtml(const RowsToCopy& rows) {
  const std::vector<ColumnTags> columns = TagsOf(rows.Columns);
  std::string html = "<table><tr>";
  for (const ColumnTags& tags : columns) {
    html += "<th" + AlignmentOf(rows.Columns.GetColumnAlign(tags.Column)) + ">";
    AppendEscaped(html, rows.Columns.GetColumnName(tags.Column));
    html += "</th>";
  }
  html += "</tr>";
  ForEachRow(rows.Selection, [&](int row) {
    html += "<tr>";
    for (const ColumnTags& tags : columns) AppendHtmlCell(html, tags, rows.Cell(row, tags.Column));
    html += "</tr>";
  });
  return html += "</table>";
}
