#include "toolkit/grid/grid_ctrl_impl.h"

#include <wx/filename.h>
#include <wx/stdpaths.h>
#include <wx/textfile.h>
#include <wx/utils.h>

#include <filesystem>
#include <fstream>

#include "tests/toolkit/gui_test.h"
#include "toolkit/grid/grid_ctrl.h"
#include "toolkit/system/make_child.h"

namespace {

// The clipboard data of a format in another program; empty if there is none.
std::string ReadElsewhere(const std::wstring& kind) {
  const std::filesystem::path self(wxStandardPaths::Get().GetExecutablePath().ToStdWstring());
  const std::wstring reader = (self.parent_path() / ("clipboard_reader" + self.extension().string())).wstring();
  const std::wstring file = wxFileName::CreateTempFileName("clipboard").ToStdWstring();
  const wchar_t* const command[] = {reader.c_str(), kind.c_str(), file.c_str(), nullptr};
  const long outcome = wxExecute(command, wxEXEC_SYNC | wxEXEC_NODISABLE);  // serves events
  EXPECT_TRUE(outcome == 0 || outcome == 1) << outcome;
  std::ifstream stream(std::filesystem::path(file), std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  stream.close();
  std::filesystem::remove(file);
  return bytes;
}

// The table without the prefix that declares UTF-8.
std::string TableElsewhere() {
  const std::string html = ReadElsewhere(L"html");
  const std::size_t from = html.find("<table>"), end = html.rfind("</table>");
  EXPECT_TRUE(html.starts_with("<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\"><table>") ||
              html.starts_with("Version:"))
      << html;
  return end < html.size() ? html.substr(from, end + 8 - from) : html;
}

using GridCopy = GuiTest;

TEST_F(GridCopy, ReachesAnotherProgram) {
  const std::string eol = wxString(wxTextFile::GetEOL()).ToStdString();
  auto& grid = MakeChild<CQORPGridCtrl>();
  ASSERT_TRUE(grid.Create(Frame, 7));
  for (int column = 0; column < 2; ++column) grid.InsertColumn(column, L"T" + std::to_wstring(column), 100);
  grid.EnableVirtualMode([](int row, int column, CQORPGridCell& cell) {
    cell.Text = column == 0 ? L"Z\u00FCrich \u20AC" : std::to_wstring(row);
    return row != 1 || column != 1;
  });
  grid.SetVirtualRows(2);
  ASSERT_TRUE(grid.Copy());
  EXPECT_EQ(ReadElsewhere(L"text"), "Z\xC3\xBCrich \xE2\x82\xAC\t0" + eol + "Z\xC3\xBCrich \xE2\x82\xAC\t" + eol);
  EXPECT_EQ(TableElsewhere(),
            "<table><tr><td>Z\xC3\xBCrich \xE2\x82\xAC</td><td>0</td></tr>"
            "<tr><td>Z\xC3\xBCrich \xE2\x82\xAC</td><td></td></tr></table>");

  grid.SetVirtualRows(40'000);  // systems transfer this in several pieces
  grid.SetCurSel(39'999);
  ASSERT_TRUE(grid.CopyHTML());
  const std::string table =
      "<table><tr><th>T0</th><th>T1</th></tr><tr><td>Z\xC3\xBCrich \xE2\x82\xAC</td><td>39999</td></tr></table>";
  EXPECT_EQ(TableElsewhere(), table);
  EXPECT_EQ(ReadElsewhere(L"text"), "");
  grid.SelectAll();
  ASSERT_TRUE(grid.Copy());
  EXPECT_TRUE(ReadElsewhere(L"text").ends_with("\t39999" + eol));
  EXPECT_TRUE(TableElsewhere().ends_with("<td>39998</td></tr>" + table.substr(table.find("</tr>") + 5)));

  grid.SetVirtualRows(0);
  EXPECT_FALSE(grid.Copy() || grid.CopyHTML());
}

}  // namespace
