// The terminal's windows with a plug-in that writes down what it is told.
#include "terminal/windows/session/window_session.h"

#include <wx/propgrid/propgrid.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "host_link/messages/packet_reader.h"
#include "terminal/common/errors.h"
#include "terminal/windows/drivers/screen_picture.h"
#include "tests/terminal/test_files.h"
#include "tests/toolkit/dialog_answers.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/dialogs/file_dialog.h"
#include "toolkit/dialogs/message_box.h"

namespace {

std::vector<std::string> Answers;
void NoteAnswer(CQORPacketReader* message) {
  const std::string bytes(reinterpret_cast<const char*>(message->Data), message->End);
  Answers.push_back(bytes.substr(15));  // behind header and number
}

class WindowSessionTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    if (IsSkipped()) return;
    WriteTestFile("securities.csv", std::string(kSecurityHeader) +
                                        "NYSE,BAC,BAC,BANK,EQ,,XX,0,1\n"
                                        "ARCA,IBM,IBM,BIG BLUE,EQ,,XX,0,2.5\n");
    WriteTestFile("desk.csv", std::string(kDeskHeader) + kDeskLine);
    Given.Day = WriteTestFile("day.csv", kTradeHeader + TradeLine("20131007-00:00:01", "1") +
                                             TradeLine("20131007-00:00:02", "2") + TradeLine("20131007-00:00:03", "3") +
                                             TradeLine("20131007-01:00:00", "4"));
    Given.Live = ParseLiveFrom("2");
    Given.SpeedGiven = true;
    Given.Plugin = ProgramFolder() / (std::string("fake_plugin") + ModuleSuffix());
    Given.Work = TestFolder() / "work";
    std::filesystem::create_directories(ProgramFolder() / "working_folder");  // no samples for it
    Home = std::filesystem::current_path();
    Open();
  }
  void TearDown() override {
    Session.reset();
    std::filesystem::current_path(Home);
    GuiTest::TearDown();
  }
  void Open() {
    Session = std::make_unique<WindowSession>(FilesOf(Given), Given, BadLines);
    Session->Open();
    ASSERT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded() || Session->GetDay().DayTrades() == 3; }));
  }
  // What the plug-in was told, but for its refreshes.
  std::string Log() { return Without(ReadTestFile(Given.Work / "fake_plugin.log"), "refresh\n"); }
  void Ask(const void* window) {
    CQORPacketWriter question(0);
    question.AddU16(10002, 32022);
    question.AddU64(30002, reinterpret_cast<std::uint64_t>(&NoteAnswer));
    question.AddU64(30001, reinterpret_cast<std::uint64_t>(window));
    RunningHost()->PluginDataSend(&question);
  }

  Options Given;
  std::filesystem::path Home;
  std::ostringstream Reports;
  BadLineReport BadLines{Reports};
  std::unique_ptr<WindowSession> Session;
};

const std::string kDownload = "routed 8112\nmaster BIG BLUE 2.5\nbars 1\nraw 30020\n";

TEST_F(WindowSessionTest, PlaysTheDayAndLogsInAnew) {
  EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  const std::string start = "raw 30025\nexported 30026\nraw 30022\nrouted 8111 1\nrouted 8111 2\n" + kDownload;
  const std::string day = start + "routed 9101 3\nrouted 9101 4\n";
  EXPECT_EQ(Log(), day);
  Session->Commands().Run(TerminalCommand::NewLogin);
  EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  const std::string again = "raw 30022\nrouted 8111 1\nrouted 8111 2\nrouted 8111 3\nrouted 8111 4\n" + kDownload;
  EXPECT_EQ(Log(), day + again);
  Session->Commands().Run(TerminalCommand::RefreshBooks);
  EXPECT_EQ(Log(), day + again + "raw 30020\n");
  Session->GetWindows().Frame()->Close();
  EXPECT_EQ(Log(), day + again + "raw 30020\nraw 30021\n");
  Pump();
  EXPECT_EQ(Session->GetWindows().Frame(), nullptr);
  EXPECT_TRUE(std::filesystem::exists(Given.Work / "TerminalWindows.xml"));
}

TEST_F(WindowSessionTest, RunsThePluginsEntryByMenuAndKey) {
  const auto commands = [this] {
    const std::string log = Log();
    std::size_t count = 0;
    for (std::size_t at = 0; (at = log.find("command\n", at)) != std::string::npos; ++at) ++count;
    return count;
  };
  EXPECT_TRUE(Session->GetWindows().Frame()->RunMenu({L"Fakes", L"Fake Book"}));
  EXPECT_FALSE(Session->GetWindows().Frame()->RunMenu({L"Fakes", L"Fake"}));
  EXPECT_FALSE(Session->GetWindows().Frame()->RunMenu({L"Fakes"}));
  EXPECT_EQ(commands(), 1U);
  MarketWatchBar& bar = Session->GetWindows().Watch();
  const struct {
    const char* Place;
    void (*Put)(MarketWatchBar& bar);
  } places[] = {
      {"tab", [](MarketWatchBar& moved) { moved.TabControlBar(); }},
      {"docked", [](MarketWatchBar& moved) { moved.DockControlBar(DockSide::Left); }},
      {"floating", [](MarketWatchBar& moved) { moved.FloatControlBar(wxRect(300, 300, 500, 300)); }},
  };
  for (const auto& row : places) {
    SCOPED_TRACE(row.Place);
    row.Put(bar);
    bar.ShowControlBar(true);
    WaitForActivation(bar);
    ASSERT_TRUE(PumpUntil([&bar] { return bar.GetDockingManager()->BarOf(wxWindow::FindFocus()) == &bar; }));
    const std::size_t before = commands();
    wxUIActionSimulator().Char(WXK_F8);
    EXPECT_TRUE(PumpUntil([&] { return commands() > before; }));
    Pump();
    EXPECT_EQ(commands(), before + 1);
  }
  bar.Grid().SetCurSel(1);
  DoubleClick(*bar.Grid().GetRowsWindow(), bar.Grid().CellRect(0, 1).GetTopLeft() + wxPoint(5, 5));
  EXPECT_EQ(commands(), 5U);
  EXPECT_EQ(bar.Grid().GetCurSel(), 0);
  Press(*bar.Grid().GetRowsWindow(), WXK_RETURN);
  EXPECT_EQ(commands(), 6U);
}

TEST_F(WindowSessionTest, AnswersWhatIsSelected) {
  MarketWatchBar& bar = Session->GetWindows().Watch();
  const CQORPDockingControlBar* watch = &bar;
  Answers.clear();
  bar.Grid().SetCurSel(-1);
  Ask(watch);
  EXPECT_TRUE(bar.Grid().Select("IBM"));
  Ask(watch);
  Ask(nullptr);
  Ask(this);  // no window of the terminal
  EXPECT_EQ(Answers, (std::vector<std::string>{"", std::string("#\xE2\xD6\4\0ARCA#\x40\xD7\3\0IBM", 17)}));
  EXPECT_FALSE(bar.Grid().Select("ibm"));

  auto* book = std::make_unique<CQORPDockingControlBar>().release();  // the frame owns it
  ASSERT_TRUE(book->CreateBar(Session->GetWindows().Frame()->GetDockingManager(), L"Book", wxRect(200, 200, 300, 200),
                              RunningHost()->GetPluginBarID("Book")));
  const std::string before = Log();
  Ask(book);
  EXPECT_EQ(Log(), before + "raw 32022\n");
  EXPECT_EQ(Answers.size(), 2U);
}

std::vector<std::string> Calls;
void FillList(CQORPPropList* list, const void* second) {
  Calls.push_back(second != nullptr && wxWindow::FindFocus()->GetName() == "grid" ? "fill" : "not in the book");
  list->AddProperty(std::make_unique<CQORPProp>(L"Number", 5, 0));
  CQORPacketWriter filled(0);
  filled.AddU16(10002, 32004);
  RunningHost()->PluginDataSend(&filled);
}
void ApplyItem(CQORPProp* item, void* grid) {
  Calls.push_back(std::to_string(std::get<std::int32_t>(item->GetValue())) +
                  static_cast<wxWindow*>(grid)->GetName().ToStdString());
}

TEST_F(WindowSessionTest, ShowsPropertiesWhileTheBookIsThere) {
  auto* book = std::make_unique<CQORPDockingControlBar>().release();  // the frame owns it
  ASSERT_TRUE(
      book->CreateBar(Session->GetWindows().Frame()->GetDockingManager(), L"Book", wxRect(200, 200, 300, 200), 77));
  book->DockControlBar(DockSide::Left);
  auto* grid = std::make_unique<wxTextCtrl>(book, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, 0,
                                            wxDefaultValidator, "grid")
                   .release();
  CQORPacketWriter request(0);
  request.AddU16(10002, 32003);
  request.AddU64(30002, reinterpret_cast<std::uint64_t>(&FillList));
  request.AddU64(30031, reinterpret_cast<std::uint64_t>(&ApplyItem));
  request.AddU64(30001, reinterpret_cast<std::uint64_t>(static_cast<wxWindow*>(grid)));
  PropertyPane& pane = *Session->GetWindows().Properties();
  const auto inPane = [&pane] { return pane.GetDockingManager()->BarOf(wxWindow::FindFocus()) == &pane; };
  const auto number = [&pane](long value) {
    auto& list = dynamic_cast<wxPropertyGrid&>(*pane.List().GetChildren().front());
    list.ChangePropertyValue(list.GetPropertyByLabel(L"Number"), value);
  };
  Calls.clear();
  RunningHost()->PluginDataSend(&request);
  EXPECT_FALSE(pane.IsBarShown()) << "the book is not shown";
  for (int time = 0; time < 2; ++time) {
    book->ShowControlBar(true);
    grid->SetFocus();
    ASSERT_TRUE(PumpUntil([grid] { return wxWindow::FindFocus() == grid; }));
    RunningHost()->PluginDataSend(&request);
    EXPECT_TRUE(pane.IsDocked());
    EXPECT_TRUE(PumpUntil(inPane));
    EXPECT_EQ(pane.List().GetProperties().size(), 1U);
    number(-2147483647);
    number(7);
    number(7);
    book->ShowControlBar(false);
    RunningHost()->ApplicationFocus(book, true);
    EXPECT_TRUE(pane.List().GetProperties().empty());
  }
  EXPECT_EQ(Calls, (std::vector<std::string>{"fill", "-2147483647grid", "7grid", "fill", "-2147483647grid", "7grid"}));
  Session->Commands().Run(TerminalCommand::Properties);
  EXPECT_FALSE(pane.IsBarShown());
  Session->Commands().Run(TerminalCommand::Properties);
  EXPECT_TRUE(pane.IsBarShown());
}

TEST_F(WindowSessionTest, ShowsTradesAndRemembersItsPlaces) {
  MarketWatchGrid& grid = Session->GetWindows().Watch().Grid();
  EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  grid.ToggleSortColumn(5);  // a row with trades comes first
  EXPECT_EQ(grid.Select("IBM"), true);
  EXPECT_EQ(grid.GetCurSel(), 0);
  EXPECT_EQ(grid.Selected()->Trades, 4U);
  grid.SetColumnWidth(3, 333);
  // A window manager may still be placing the new window.
  int equal = 0;
  ASSERT_TRUE(PumpUntil([this, &equal] {
    const bool isWanted = Session->GetWindows().Frame()->GetSize() == wxSize(900, 640);
    if (!isWanted) Session->GetWindows().Frame()->SetSize(40, 60, 900, 640);
    equal = isWanted ? equal + 1 : 0;
    return equal == 30;
  }));
  PaintNow(*grid.GetRowsWindow());
  SavePicture(*Session->GetWindows().Frame(), TestFolder() / "windows.png");
  EXPECT_EQ(ReadTestFile(TestFolder() / "windows.png").substr(0, 8), "\x89PNG\r\n\x1A\n");
  Session->GetWindows().Frame()->Close();
  Session.reset();
  Open();
  EXPECT_EQ(Session->GetWindows().Frame()->GetSize(), wxSize(900, 640));
  EXPECT_EQ(Session->GetWindows().Watch().Grid().GetColumnsInfo().GetColumnWidth(3), 333);
  EXPECT_EQ(Session->GetWindows().Watch().Grid().GetColumnsInfo().GetColumnState(5), 1);
}

TEST_F(WindowSessionTest, PlaysTheDayOfTheLastTime) {
  const auto close = [this] {
    EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
    Session->GetWindows().Frame()->Close();
    Session.reset();
    return Log();
  };
  const std::string first = close();
  const auto day = std::exchange(Given.Day, {});
  Open();
  EXPECT_EQ(close(), first);
  const auto sample = ProgramFolder() / "sample_day";
  std::filesystem::create_directory(sample);
  for (const char* name : {"securities.csv", "desk.csv"}) std::filesystem::rename(TestFolder() / name, sample / name);
  std::filesystem::rename(day, sample / "trades.csv");
  Session = std::make_unique<WindowSession>(FilesOf(Given), Given, BadLines);
  DialogAnswers answers;
  Session->Open();
  EXPECT_TRUE(PumpUntil([&answers] { return !answers.Said.empty(); }));
  EXPECT_NE(answers.Said.front().find(L"day.csv"), std::wstring::npos);
  EXPECT_EQ(close(), first);
  std::filesystem::remove_all(sample);
}

TEST_F(WindowSessionTest, CountsFailedCommandsOfAScriptApart) {
  Session.reset();
  std::filesystem::current_path(Home);
  Given.Script = WriteTestFile("script.txt", "wait played\nclose-book\nselect NONE\n");
  Open();
  EXPECT_TRUE(PumpUntil([this] { return BadLines.FailedCommands() == 2; })) << Reports.str();
  const std::string summary = SummaryText(Session->Summary());
  EXPECT_NE(summary.find("Bad lines           0\nFailed commands     2\n"), std::string::npos) << summary;
}

// Of the log: the column's texts of all its rows, from the top.
std::vector<std::string> Shown(const LogGrid& grid, LogColumn column) {
  std::vector<std::string> texts;
  for (int row = 0; row < grid.GetVirtualRows(); ++row) texts.push_back(grid.CellText(row, column));
  return texts;
}

TEST_F(WindowSessionTest, LogsMessagesOfBothDirections) {
  using Texts = std::vector<std::string>;
  LogBar& bar = Session->GetWindows().Messages();
  LogGrid& grid = bar.Grid();
  EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  EXPECT_FALSE(bar.IsBarShown());
  EXPECT_TRUE(Session->GetWindows().Frame()->RunMenu({L"View", L"Messages"}));
  EXPECT_TRUE(bar.IsDocked());
  EXPECT_TRUE(PumpUntil([&grid] { return grid.GetVirtualRows() > 0; }));
  EXPECT_EQ(Shown(grid, LogColumn::Number),
            (Texts{"9101", "9101", "30020", "32022", "8112", "8111", "8111", "30022", "30026", "32005", "30025"}));
  grid.SetFilterText(static_cast<int>(LogColumn::Direction), L"FROM");
  EXPECT_EQ(Shown(grid, LogColumn::Meaning), (Texts{"what is selected?", "register the beat"}));
  Ask(&Session->GetWindows().Watch());
  Ask(&Session->GetWindows().Watch());
  EXPECT_TRUE(PumpUntil([&grid] { return grid.GetVirtualRows() == 4; }));
  grid.OnFilterBarClearAll();
  grid.SetFilterText(static_cast<int>(LogColumn::Number), L"81");
  EXPECT_EQ(Shown(grid, LogColumn::Direction), (Texts{"to plug-in", "to plug-in", "to plug-in"}));
  DialogAnswers answers;
  answers.SaveAs = TestFolder() / "messages.csv";
  EXPECT_TRUE(grid.RunContextMenu({L"Save As..."}));
  const std::string saved = ReadTestFile(TestFolder() / "messages.csv");
  EXPECT_EQ(std::count(saved.begin(), saved.end(), '\n'), 3);
  EXPECT_LT(saved.find(",8111,downloaded trade,"), saved.find(",8112,end of the download,"));
  EXPECT_TRUE(grid.RunContextMenu({L"Clear"}));
  EXPECT_EQ(grid.GetVirtualRows(), 0);
  Session->Commands().Run(TerminalCommand::RefreshBooks);
  EXPECT_TRUE(grid.RunContextMenu({L"Reset Filter"}));
  EXPECT_EQ(Shown(grid, LogColumn::Number), Texts{"30020"});
}

// A book whose two menu commands open a box of a question and a dialog for a file.
class ScriptedGrid : public CQORPGridCtrl {
 public:
  ScriptedGrid() {
    Bind(wxEVT_MENU, [this](wxCommandEvent& event) { event.GetId() == 1 ? AskQuestion() : AskForFile(); });
  }
  void AskQuestion() {
    CQORPMessageBox box;
    box.Parent = this;
    box.Text = L"Shall the answer be no?";
    box.Style = 4;  // Yes and No
    Note(box.ShowModal() == 7 ? "No" : "Yes");
  }
  void AskForFile() {
    CQORPFileDialog dialog(this, "proposal.csv", L".csv", L"Files (*.csv)");
    const auto path = dialog.AskForPath();
    Note(path ? path->filename().string() : "cancelled");
  }
  std::span<const CQORPMenuItem> ContextMenu() const override {
    static constexpr CQORPMenuItem kMenu[] = {{CQORPMenuItem::Kind::Command, 0, 1, L"&Ask"},
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

class ScriptRun : public GuiTest, private ScriptTarget {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    if (IsSkipped()) return;
    Manager = std::make_unique<CQORPDockingManager>(*Frame);
    Bar = std::make_unique<CQORPDockingControlBar>().release();  // the frame owns it, and the bar the grid
    ASSERT_TRUE(Bar->CreateBar(*Manager, L"Book", wxRect(100, 100, 500, 300), 1));
    Grid = std::make_unique<ScriptedGrid>().release();
    ASSERT_TRUE(Grid->Create(Bar, 1));
    for (int column = 0; column < 20; ++column) Grid->InsertColumn(column, L"C" + std::to_wstring(column), 100);
    Grid->EnableVirtualMode([](int, int, CQORPGridCell&) { return true; });
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
  bool Focus(ScriptFocus, const std::string&) override { return false; }
  bool HasFocus(ScriptFocus) override { return false; }
  bool Press(const KeyPress&) override { return false; }
  bool RunMenu(const std::vector<std::wstring>&) override { return false; }
  CQORPDockingControlBar* Book() override {
    if (--LooksUntilLess == 0) Grid->SetVirtualRows(299);
    return Bar;
  }
  bool HasPlayed() override { return true; }
  std::size_t OpenBooks() override { return 1; }
  void SavePictureTo(const std::filesystem::path&) override {}
  void CloseWindows() override {}

  std::unique_ptr<CQORPDockingManager> Manager;
  CQORPDockingControlBar* Bar = nullptr;
  ScriptedGrid* Grid = nullptr;
  int LooksUntilLess = 0;  // the book loses a row when it has been looked for so often
};

using Texts = std::vector<std::string>;

TEST_F(ScriptRun, DoesInTheBookWhatAUserDoes) {
  EXPECT_EQ(Run("filter C2 x\n"), "1: the filter bar is not shown\n");
  Grid->EnableFilterBar(true);
  EXPECT_EQ(Run("filter C18 a >\nfilter C18 b\nfilter C18\nheader C19\nheader C0 ctrl\nrows 3 200\nplace bottom\n"),
            "");
  EXPECT_EQ(Grid->Notes, (Texts{"18=a", "18=a ", "18=a >", "18=b", "18=", "sort 19"}));
  EXPECT_TRUE(Grid->IsColumnSelected(0));
  ASSERT_EQ(Grid->GetSelectionCount(), 1);
  EXPECT_EQ(Grid->GetSelection(0).Top, 2);
  EXPECT_EQ(Grid->GetSelection(0).Bottom, 199);
  EXPECT_TRUE(Bar->IsDocked());
  LooksUntilLess = 5;
  EXPECT_EQ(Run("expect-rows 299\n"), "");
}

TEST_F(ScriptRun, AnswersDialogs) {
  const std::filesystem::path file = TestFolder() / "made" / "b.csv";
  EXPECT_EQ(
      Run("book-menu Ask\nexpect-text answer be no\nanswer No\nsave-as " + PathText(file) +
          "\nbook-menu Files>Export\ncancel-save\nbook-menu Files>Export\nbook-menu Ask\nanswer Maybe\nanswer Yes\n"),
      "9: the dialog has no such button\n");
  EXPECT_EQ(Grid->Notes, (Texts{"No", "b.csv", "cancelled", "Yes"}));
  EXPECT_TRUE(std::filesystem::is_directory(file.parent_path()));
}

// A book is not closed behind the back of a dialog of its own.
TEST_F(ScriptRun, ClosesABookAndTellsTheUsage) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(TestFolder());
  EXPECT_EQ(Run("usage a\nbook-menu Ask\nclose-book\nanswer No\nclose-book\n"), "3: a dialog is up\n");
  std::filesystem::current_path(before);
  EXPECT_FALSE(Bar->IsBarShown());
  std::ifstream file(TestFolder() / "out" / "usage.csv");
  std::string titles, name, heap, handles, windows, books;
  std::getline(file, titles);
  for (std::string* value : {&name, &heap, &handles, &windows}) std::getline(file, *value, ',');
  std::getline(file, books);
  EXPECT_EQ(titles, "name,heap,handles,windows,books");
  EXPECT_EQ(name + books, "a1");
  EXPECT_GE(heap.size(), 6U);
  EXPECT_NE(handles, "");  // Wine counts none
  EXPECT_GT(std::stoi(windows), 2);
}

TEST_F(ScriptRun, ReportsWhatIsOtherwise) {
  EXPECT_EQ(Run("expect-rows 300\nexpect-rows 299\nexpect-text Buy\nheader C20\nrows 300 301\nbook-menu Files\n"
                "answer OK\nsave-as x\nsave-as y\nexit\n"),
            "2: the book shows 300 rows\n3: the book shows no such text\n4: the book has no column of that title\n"
            "5: the book shows 300 rows\n6: the book's menu has no such entry, or it cannot be had now\n"
            "7: there is no dialog\n9: the save dialog that was to be answered before has not come up\n"
            "10: the save dialog that was to be answered has not come up\n");
}

}  // namespace
