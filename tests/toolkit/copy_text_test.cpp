#include "toolkit/model/copy_text.h"

#include <gtest/gtest.h>

namespace {

TEST(CopyText, TakesSelectedRowsAndVisibleColumnsOnce) {
  CQORPGridColumnsInfo columns;  // on the screen: C to the right, A
  for (const auto& [column, name] : {std::pair{0, L"<A>"}, {1, L"B"}, {2, L"C"}})
    columns.InsertColumn(column, name, 50);
  columns.SetColumnVisible(1, false);
  columns.SetColumnDisplayPos(0, 2);
  columns.SetColumnAlign(2, 1);
  RowSelection selection;
  selection.SetRows(3);
  std::wstring asked, cell;
  const RowsToCopy rows{columns, selection, [&](int row, int column) -> std::wstring_view {
                          asked += cell = std::to_wstring(row) + wchar_t(L'a' + column);
                          return cell;
                        }};
  EXPECT_EQ(CopyAsTextAndHtml(rows, L"\n").Text, L"0c\t0a\n1c\t1a\n2c\t2a\n");
  selection.SelectOnly(2);
  selection.Toggle(0);
  asked.clear();
  const CopiedRows copied = CopyAsTextAndHtml(rows, L"\r\n");
  EXPECT_EQ(asked, L"0c0a2c2a");
  EXPECT_EQ(copied.Text, L"0c\t0a\r\n2c\t2a\r\n");
  const std::string html =
      "<tr><td align=\"right\">0c</td><td>0a</td></tr><tr><td align=\"right\">2c</td><td>2a</td></tr>";
  EXPECT_EQ(copied.Html, "<table>" + html + "</table>");
  EXPECT_EQ(CopyAsHtml(rows), "<table><tr><th align=\"right\">C</th><th>&lt;A&gt;</th></tr>" + html + "</table>");
}

TEST(CopyText, KeepsEveryCellOneAndAsItStands) {
  const struct {
    std::wstring Cell, Text;
    std::string Html;
    bool StaysText = false;
  } cases[] = {
      {L"", L"", ""},
      {L"a\tb\r\nc\x1F\x7F", L"a b  c  ", "a b  c  "},
      {L"R&D <\"x\">", L"R&D <\"x\">", "R&amp;D &lt;&quot;x&quot;&gt;"},
      {L"\u07FF\u0800\uFFFD", L"\u07FF\u0800\uFFFD", "\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD"},
      {L"\U00010000\U0001F600", L"\U00010000\U0001F600", "\xF0\x90\x80\x80\xF0\x9F\x98\x80"},
      {{wchar_t(0xD83D), L'x'}, {wchar_t(0xD83D), L'x'}, "\xEF\xBF\xBDx"},
      {L"123456789012345", L"123456789012345", "123456789012345"},
      {L"1234567890123456", L"1234567890123456", "1234567890123456", true},
      {L"0", L"0", "0"},
      {L"0.50", L"0.50", "0.50"},
      {L"007", L"007", "007", true},
      {L"12E34", L"12E34", "12E34", true},
      {L"-1,234.50", L"-1,234.50", "-1,234.50"},
      {L"-A1", L"-A1", "-A1", true},
      {L"\t=1+1", L" =1+1", " =1+1", true},
      {L"@sum", L"@sum", "@sum", true},
  };
  CQORPGridColumnsInfo columns;
  columns.InsertColumn(0, L"", 50);
  RowSelection selection;
  selection.SetRows(1);
  for (const auto& one : cases) {
    SCOPED_TRACE(one.Html);
    const auto cell = [&one](int, int) -> std::wstring_view { return one.Cell; };
    const CopiedRows copied = CopyAsTextAndHtml({columns, selection, cell}, L"\n");
    EXPECT_EQ(copied.Text, one.Text + L"\n");
    const std::string style = one.StaysText ? R"( style='mso-number-format:"\@"')" : "";
    EXPECT_EQ(copied.Html, "<table><tr><td" + style + ">" + one.Html + "</td></tr></table>");
  }
}

}  // namespace
