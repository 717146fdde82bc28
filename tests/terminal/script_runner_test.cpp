#include "terminal/windows/drivers/script_runner.h"

#include <wx/button.h>
#include <wx/checklst.h>
#include <zlib.h>

#include <sstream>

#include "terminal/common/errors.h"
#include "terminal/common/png_file.h"
#include "tests/terminal/test_files.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/dialogs/dialog.h"
#include "toolkit/dialogs/message_box.h"
#include "toolkit/system/make_child.h"

namespace {

// A book whose menu commands open a box of a question, a dialog for a file and one with a list.
class ScriptedGrid : public CQORPGridCtrl {
 public:
  ScriptedGrid() {
    Bind(wxEVT_MENU, [this](wxCommandEvent& event) {
      event.GetId() == 1 ? AskQuestion() : event.GetId() == 2 ? AskForFile() : AskForItems();
    });
  }
  void AskQuestion() {
    CQORPMessageBox box({.Parent = this, .Text = L"Shall the answer be no?", .Style = 4});  // Yes and No
    Note(box.ShowModal() == 7 ? "No" : "Yes");
  }
  void AskForFile() {
    const auto path = CQORPFileDialog(this, "proposal.csv", L".csv", L"Files (*.csv)").AskForPath();
    Note(path ? path->filename().string() : "cancelled");
  }
  void AskForItems() {
    wxDialog dialog(this, wxID_ANY, L"Items");
    const wxString items[] = {L"First", L"Second"};
    auto& list = MakeChild<wxCheckListBox>(&dialog, wxID_ANY, wxDefaultPosition, wxDefaultSize, 2, items);
    MakeChild<wxButton>(&dialog, wxID_OK, L"Done");
    list.Bind(wxEVT_CHECKLISTBOX, [&](const wxCommandEvent& event) {
      const auto item = static_cast<unsigned>(event.GetInt());
      Note("item " + std::to_string(item) + (list.IsChecked(item) ? "+" : "-"));
    });
    Note(dialog.ShowModal() == wxID_OK ? "chosen " + std::to_string(list.GetSelection()) : "cancelled");
  }
  std::span<const CQORPMenuItem> ContextMenu() const override {
    static constexpr CQORPMenuItem kMenu[] = {{CQORPMenuItem::Kind::Command, 0, 1, L"&Ask"},
                                              {CQORPMenuItem::Kind::Command, 0, 3, L"Items"},
                                              {CQORPMenuItem::Kind::Submenu, 0, 0, L"Files"},
                                              {CQORPMenuItem::Kind::Command, 1, 2, L"Export"}};
    return kMenu;
  }
  void OnFilterBarChanged(int column, const std::wstring& text) override {
    Note(std::to_string(column) + "=" + wxString(text).utf8_string());
  }
  void ToggleSortColumn(int column) override { Note("sort " + std::to_string(column)); }
  void Note(const std::string& what) { Notes.push_back(what); }

  std::vector<std::string> Notes;
};

class ScriptRun : public GuiTest, protected ScriptTarget {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    Manager = std::make_unique<CQORPDockingManager>(*Frame);
    Bar = &MakeChild<CQORPDockingControlBar>();
    ASSERT_TRUE(Bar->CreateBar(*Manager, L"Book", wxRect(100, 100, 500, 300), 1));
    Grid = &MakeChild<ScriptedGrid>();
    ASSERT_TRUE(Grid->Create(Bar, 1));
    for (int column = 0; column < 20; ++column) Grid->InsertColumn(column, L"C" + std::to_wstring(column), 100);
    Grid->EnableVirtualMode([](int row, int, CQORPGridCell& cell) {
      cell.Text = L"row " + std::to_wstring(row);
      return true;
    });
    Grid->SetVirtualRows(300);
    Grid->AdjustLayout();
    Bar->TabControlBar();
    Bar->ShowControlBar(true);
    Pump();
  }
  void TearDown() override {
    Manager.reset();
    GuiTest::TearDown();
  }
  // What is reported, without the file.
  std::string Run(const std::string& script) {
    const auto file = WriteTestFile("script.txt", script);
    std::ostringstream reports;
    BadLineReport badLines(reports);
    ScriptRunner runner(file, *this, badLines);
    runner.Start();
    EXPECT_TRUE(PumpUntil([&runner] { return runner.HasEnded(); }));
    Pump();
    return Without(reports.str(), PathText(file) + ":");
  }
  bool OpenBook() override { return false; }
  bool Select(const std::string&) override { return false; }
  bool Focus(ScriptFocus, const std::string& title) override {
    Grid->Note("focus " + title);
    LooksUntilLost = LooksUntilLost > 0 ? 2 : 0;
    return true;
  }
  bool HasFocus(ScriptFocus) override { return true; }
  bool Press(const KeyPress&) override { return false; }
  bool RunMenu(const std::vector<std::wstring>&) override { return false; }
  CQORPDockingControlBar* Book() override {
    if (--LooksUntilLess == 0) Grid->SetVirtualRows(299);
    return --LooksUntilLost == 0 ? nullptr : Bar;
  }
  bool HasPlayed() override { return true; }
  bool IsLive() override { return LooksUntilLive-- == 0; }
  std::size_t OpenBooks() override { return 1; }
  void SavePictureTo(const std::filesystem::path&) override {}
  void CloseWindows() override {}

  std::unique_ptr<CQORPDockingManager> Manager;
  CQORPDockingControlBar* Bar = nullptr;
  ScriptedGrid* Grid = nullptr;
  int LooksUntilLess = 0;  // the book loses a row when it has been looked for so often
  int LooksUntilLive = 3;
  int LooksUntilLost = 0;  // and once the focus
};

using Texts = std::vector<std::string>;

TEST_F(ScriptRun, GivesTheFocusBackToTheNamedBook) {
  LooksUntilLost = 1;
  EXPECT_EQ(Run("focus book One\nheader C1\nselect X\nheader C2\n"), "3: the command cannot be done now\n");
  EXPECT_EQ(Grid->Notes, (Texts{"focus One", "focus One", "sort 1", "sort 2"}));
}

// The second script takes longer than a step and is over long before the first one goes on.
TEST_F(ScriptRun, WaitsAsLongAsItIsTold) {
  std::ostringstream reports;
  BadLineReport badLines(reports);
  ScriptRunner waiting(WriteTestFile("wait.txt", "wait 3600000\nselect X\n"), *this, badLines);
  waiting.Start();
  EXPECT_EQ(Run("wait 1\nwait live\nwait 1\n"), "");
  EXPECT_EQ(LooksUntilLive, -1);
  EXPECT_FALSE(waiting.HasEnded());
}

TEST_F(ScriptRun, DrivesABook) {
  EXPECT_EQ(Run("filter C2 x\n"), "1: the filter bar is not shown\n");
  Grid->EnableFilterBar(true);
  EXPECT_EQ(Run("filter C18 a >\nfilter C18 b\nfilter C18 \xC3\xBC\nfilter C18\nfilter C0 z\nheader C19\nheader C0 "
                "ctrl\nrows 3 200\nplace bottom\n"),
            "");
  EXPECT_EQ(Grid->Notes, (Texts{"18=a", "18=a ", "18=a >", "18=b", "18=\xC3\xBC", "18=", "0=z", "sort 19"}));
  EXPECT_TRUE(Grid->IsColumnSelected(0));
  ASSERT_EQ(Grid->GetSelectionCount(), 1);
  EXPECT_EQ(std::pair(Grid->GetSelection(0).Top, Grid->GetSelection(0).Bottom), std::pair(2, 199));
  EXPECT_TRUE(Bar->IsDocked());
  EXPECT_EQ(Run("find row 7\nexpect-text Continued at the top: C0, row 8\n"), "");
  LooksUntilLess = 5;
  EXPECT_EQ(Run("expect-rows 299\n"), "");
}

TEST_F(ScriptRun, AnswersDialogs) {
  const std::filesystem::path file = TestFolder() / "made" / "b.csv";
  EXPECT_EQ(Run("book-menu Ask\nexpect-text answer be no\nexpect-text be yes\nclose-book\nanswer No\nsave-as " +
                PathText(file) +
                "\nbook-menu Files>Export\ncancel-save\nbook-menu Files>Export\nbook-menu Ask\nanswer Maybe\n"
                "answer Yes\nbook-menu Items\ncheck Second\ncheck First\ncheck First\nchoose Second\n"
                "choose second\nanswer Done\nclose-book\n"),
            "3: the dialog shows no such text\n4: a dialog is up\n11: the dialog has no such button\n18: no list of "
            "the dialog has such an item\n");
  EXPECT_EQ(Grid->Notes, (Texts{"No", "b.csv", "cancelled", "Yes", "item 1+", "item 0+", "item 0-", "chosen 1"}));
  EXPECT_TRUE(std::filesystem::is_directory(file.parent_path()));
  EXPECT_FALSE(Bar->IsBarShown());
}

TEST_F(ScriptRun, ReportsUnexpectedThings) {
  EXPECT_EQ(Run("expect-rows 300\nexpect-rows 299\nexpect-text Buy\nheader C20\nrows 300 301\nbook-menu Files\n"
                "answer OK\nsave-as x\nsave-as y\nexit\n"),
            "2: the book shows 300 rows\n3: the book shows no such text\n4: the book has no column of that title\n"
            "5: the book shows 300 rows\n6: the book's menu has no such entry, or it cannot be had now\n"
            "7: there is no dialog\n9: the save dialog that was to be answered before has not come up\n"
            "10: the save dialog that was to be answered has not come up\n");
  Bar = nullptr;
  EXPECT_EQ(Run("place left\nrows 1 1\n"), "1: there is no book\n2: there is no book\n");
}

TEST(PngFile, WritesTheFormatsBytes) {
  // Two pixels side by side over two: red, green; red, blue.
  const std::uint8_t pixels[] = {255, 0, 0, 0, 255, 0, 255, 0, 0, 0, 0, 255};
  const std::string head("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\0\2\0\0\0\2\x08\2\0\0\0\xFD\xD4\x9A\x73", 33);
  EXPECT_EQ(PngBytes(2, 3, pixels) + PngBytes(0, 2, {}), "");
  EXPECT_THROW(WritePngFile(TestFolder() / "no" / "x.png", 2, 2, pixels), TerminalError);
  WritePngFile(TestFolder() / "x.png", 2, 2, pixels);
  const std::string file = ReadFile(TestFolder() / "x.png"), end("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
  EXPECT_TRUE(file.starts_with(head) && file.ends_with(end));
  const auto* data = reinterpret_cast<const Bytef*>(file.data()) + head.size() + 8;
  Bytef rows[14];
  uLongf size = sizeof rows;
  ASSERT_EQ(uncompress(rows, &size, data, static_cast<uLong>(file.size() - head.size() - end.size() - 12)), Z_OK);
  EXPECT_EQ(std::string(rows, rows + size), std::string("\0\xFF\0\0\0\xFF\0\2\0\0\0\0\1\xFF", 14));
}

}  // namespace
