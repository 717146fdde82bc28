// The terminal's windows with a plug-in that writes down what it is told.
#include <wx/filedlg.h>
#include <wx/propgrid/propgrid.h>
#include <wx/statusbr.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <sstream>

#include "platform/locale.h"
#include "terminal/windows/drivers/screen_picture.h"
#include "tests/terminal/window_session_fixture.h"
#include "tests/toolkit/dialog_answers.h"

namespace {

std::string HighFirst(int word) {
  return {0, 0, static_cast<char>(word >> 8), static_cast<char>(word)};
}

const std::string kDownload = "routed 8112\nmaster BIG BLUE 2.5\nbars 1\nraw 30020\n";
const std::string kDay = "routed 8111 1\nrouted 8111 2\n" + kDownload + "routed 9101 3\nrouted 9101 4\n";

TEST_F(WindowSessionTest, MenuPlaysTheDay) {
  const std::pair<const wchar_t*, std::string> entries[] = {
      {L"As Fast As Possible", "raw 30025\nexported 30026\nraw 30022\n" + kDay},
      {L"New Login", "raw 30022\nrouted 8111 1\nrouted 8111 2\nrouted 8111 3\nrouted 8111 4\n" + kDownload},
      {L"Start Again", "raw 30022\n" + kDay},
      {L"Refresh Books", "raw 30020\n"}};
  std::string told;
  Watch().Grid().Select("IBM");
  for (const auto& [entry, sent] : entries) {
    Choose(L"Day", entry);
    WaitForEnd();
    EXPECT_EQ(Log(), told += sent) << entry;
    EXPECT_EQ(Watch().Grid().Selected()->Trades, 4U) << "those before are forgotten";
  }
  std::string status;
  EXPECT_TRUE(PumpUntil([&] {
    Watch().SetFocus();
    status.clear();
    for (int field = 0; field < 5; ++field) status += Main().GetStatusBar()->GetStatusText(field).ToStdString() + "|";
    return status.starts_with("Market Watch|2013-10-07 01:00:00|Day played|4 trades|") && status.ends_with(" / s|");
  })) << status;
  EXPECT_TRUE(PumpUntil([this] { return ReadFile(Given.Work / "fake_plugin.log").ends_with("refresh\n"); }));
  Choose(L"File", L"Exit");
  EXPECT_EQ(Log(), told + "raw 30021\n");
  EXPECT_TRUE(PumpUntil([this] { return Session->GetWindows().Frame() == nullptr; }));
}

TEST_F(WindowSessionTest, MenuShowsHowThingsStand) {
  const wxMenuItem& pause = *Main().GetMenuBar()->GetMenu(2)->FindItemByPosition(0);
  WaitForEnd();
  EXPECT_EQ(Checked(), "000011000");
  EXPECT_FALSE(Main().RunMenu({L"Day", L"Pause"})) << "the day is over";
  const std::pair<TerminalCommand, const char*> runs[] = {
      {TerminalCommand::SixtyTimes, "000101000"},  {TerminalCommand::RealTime, "010001000"},
      {TerminalCommand::TenTimes, "001001000"},    {TerminalCommand::PlayOrPause, "101001000"},
      {TerminalCommand::PlayOrPause, "001001000"}, {TerminalCommand::MarketWatch, "001000000"},
      {TerminalCommand::Properties, "001000100"},  {TerminalCommand::Messages, "001000110"},
      {TerminalCommand::Positions, "001000111"},
  };
  for (const auto& [command, states] : runs) {
    Session->Commands().Run(command);
    EXPECT_EQ(Checked(), states) << static_cast<int>(command);
  }
  Session->Commands().Run(TerminalCommand::StartAgain);
  EXPECT_TRUE(PumpUntil([&] { return pause.IsEnabled(); }));
  Session->GetWindows().Messages().OnPressCloseButton();
  EXPECT_EQ(Checked(), "001000101") << "a closed bar shows at once";
  DialogAnswers answers;
  Choose(L"Help", L"Keys");
  Choose(L"Help", L"About");
  ASSERT_EQ(answers.Said.size(), 2U);
  EXPECT_TRUE(
      answers.Said[0].starts_with(L"Keys: F8: Fake Book Enter: the same, in market watch and positions  Ctrl+O: Open "
                                  L"Day... Ctrl+N: Connect... Ctrl+D: Day Report... Ctrl+Q: "));
  EXPECT_NE(answers.Said[1].find(L"Plug-in: Fake fake_plugin"), std::wstring::npos) << answers.Said[1];
}

TEST_F(WindowSessionTest, OpensABookByMenuKeyAndClick) {
  const auto commands = [this] { return (Log().size() - Without(Log(), "command\n").size()) / 8; };
  Choose(L"Fakes", L"Fake Book");
  for (const auto& path : {std::vector<std::wstring>{L"Fakes", L"Fake"}, {L"Fakes"}, {L"Fake", L"Fake Book"}, {}})
    EXPECT_FALSE(Main().RunMenu(path));
  EXPECT_EQ(commands(), 1U);
  for (const char place : {'t', 'd', 'f'}) {
    if (place == 't') Watch().TabControlBar();
    if (place == 'd') Watch().DockControlBar(DockSide::Left);
    if (place == 'f') Watch().FloatControlBar(wxRect(300, 300, 500, 300));
    Watch().ShowControlBar(true);
    WaitForActivation(Watch());
    ASSERT_TRUE(PumpUntil([this] { return Main().GetDockingManager().BarOf(wxWindow::FindFocus()) == &Watch(); }));
    // A key is lost while the display still moves the focus: one more after each hundred looks.
    const std::size_t before = commands();
    std::size_t looks = 0;
    EXPECT_TRUE(PumpUntil([&] {
      if (looks++ % 100 == 0) wxUIActionSimulator().Char(WXK_F8);
      return commands() > before;
    }));
    Pump();
    EXPECT_LE(commands() - before, (looks + 99) / 100) << "a command for each key";
  }
  MarketWatchGrid& grid = Watch().Grid();
  const std::size_t before = commands();
  grid.SetCurSel(1);
  DoubleClick(*grid.GetRowsWindow(), grid.CellRect(0, 1).GetTopLeft() + wxPoint(5, 5));
  EXPECT_EQ(grid.GetCurSel(), 0);
  EXPECT_EQ(commands(), before + 1);
  for (const int key : {WXK_RETURN, WXK_NUMPAD_ENTER}) Press(*grid.GetRowsWindow(), key);
  Press(*grid.GetRowsWindow(), WXK_RETURN, kControl);
  grid.SetCurSel(-1);
  Press(*grid.GetRowsWindow(), WXK_RETURN);
  EXPECT_EQ(commands(), before + 3);
}

TEST_F(WindowSessionTest, AnswersWhatIsSelectedInABar) {
  Answers.clear();
  Watch().Grid().SetCurSel(-1);
  const CQORPDockingControlBar* watch = &Watch();
  Ask(watch);
  EXPECT_TRUE(Watch().Grid().Select("IBM"));
  Ask(watch);
  Ask(nullptr);
  Ask(this);  // no window of the terminal
  EXPECT_EQ(Answers,
            (Texts{WireMessage(32023, ""), WireMessage(32023, WireText(55010, "ARCA") + WireText(55104, "IBM"))}));
  EXPECT_FALSE(Watch().Grid().Select("ibm"));
  const auto& book = MakeBook(L"Book", RunningHost()->GetPluginBarID("Book"));
  const std::string before = Log();
  Ask(&book);
  EXPECT_EQ(Log(), before + "raw 32022\n");
  EXPECT_EQ(Answers.size(), 2U);
}

Texts Calls;
void FillList(CQORPPropList* list, const void* second) {
  Calls.push_back(second != nullptr && wxWindow::FindFocus()->GetName() == "grid" ? "fill" : "not in the book");
  list->AddProperty(std::make_unique<CQORPProp>(L"Number", 5, 0));
  Send(32004);
}
void ApplyItem(CQORPProp* item, void* grid) {
  Calls.push_back(std::to_string(std::get<std::int32_t>(item->GetValue())) +
                  static_cast<wxWindow*>(grid)->GetName().ToStdString());
}

TEST_F(WindowSessionTest, ShowsPropertiesWhileTheBookIsShown) {
  auto& book = MakeBook(L"Book", 77);
  auto& grid = MakeChild<wxTextCtrl>(&book, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, 0,
                                     wxDefaultValidator, "grid");
  const auto request = [&grid] {
    Send(32003, {{30002, Address(&FillList)}, {30031, Address(&ApplyItem)}, {30001, Address<wxWindow>(&grid)}});
  };
  PropertyPane& pane = *Session->GetWindows().Properties();
  Calls.clear();
  request();
  EXPECT_FALSE(pane.IsBarShown()) << "the book is not shown";
  for (int time = 0; time < 2; ++time) {
    book.ShowControlBar(true);
    grid.SetFocus();
    ASSERT_TRUE(PumpUntil([&grid] { return wxWindow::FindFocus() == &grid; }));
    request();
    EXPECT_TRUE(pane.IsDocked());
    EXPECT_EQ(Checked()[6], '1') << "the menu shows it at once";
    EXPECT_TRUE(PumpUntil([&pane] { return pane.GetDockingManager()->BarOf(wxWindow::FindFocus()) == &pane; }));
    auto& list = dynamic_cast<wxPropertyGrid&>(*pane.List().GetChildren().front());
    for (const long value : {-2147483647, 7, 7}) list.ChangePropertyValue(list.GetPropertyByLabel(L"Number"), value);
    book.ShowControlBar(false);
    RunningHost()->ApplicationFocus(&book, true);
    EXPECT_TRUE(pane.List().GetProperties().empty());
  }
  EXPECT_EQ(Calls, (Texts{"fill", "-2147483647grid", "7grid", "fill", "-2147483647grid", "7grid"}));
}

TEST_F(WindowSessionTest, KeepsPlacesAndSort) {
  MarketWatchGrid& grid = Watch().Grid();
  CQORPGridColumnsInfo& columns = grid.GetColumnsInfo();
  WaitForEnd();
  EXPECT_TRUE(grid.Select("IBM"));
  std::string states;
  for (const int column : {5, 5, 5, 1, 5}) {
    grid.ToggleSortColumn(column);
    states += std::to_string(columns.GetColumnState(1)) + std::to_string(columns.GetColumnState(5)) + " ";
  }
  EXPECT_EQ(states, "01 0-1 00 10 01 ");
  EXPECT_EQ(grid.GetCurSel(), 0) << "a row with trades comes first, and stays the current one";
  EXPECT_EQ(grid.Selected()->Trades, 4U);
  grid.SetColumnWidth(3, 333);
  columns.SetColumnDisplayPos(0, 3);
  grid.EnableFilterBar(true);
  grid.SetFilterText(1, L"ba");
  const std::vector<int> order = columns.DisplayColumns();
  WaitForActivation(Main());
  // A window manager may still be placing the new window.
  EXPECT_TRUE(PumpUntil([this] {
    Main().SetSize(wxSize(900, 640));
    return Main().GetNormalRect().GetSize() == wxSize(900, 640);
  }));
  Main().Maximize();
  EXPECT_TRUE(PumpUntil([this] { return Main().IsMaximized(); }));
  Close();
  Given.SpeedGiven = false;
  Open();
  EXPECT_EQ(Checked(), "000101000") << "sixty times";
  EXPECT_TRUE(PumpUntil([this] { return Main().IsMaximized(); }));
  EXPECT_TRUE(PumpUntil([this] {
    Main().Maximize(false);
    return Main().GetSize() == wxSize(900, 640);
  }));
  const CQORPGridColumnsInfo& again = Watch().Grid().GetColumnsInfo();
  EXPECT_EQ(again.GetColumnWidth(3), 333);
  EXPECT_EQ(again.DisplayColumns(), order);
  EXPECT_EQ(again.GetColumnState(5), 1);
  EXPECT_TRUE(Watch().Grid().IsFilterBarEnabled());
  EXPECT_EQ(Watch().Grid().GetFilterText(1), L"ba");
  EXPECT_EQ(Watch().Grid().GetVirtualRows(), 1) << "filtered";
  Close();
  WindowMemory memory(Given.Work);
  memory.SaveFrame({{20000, 20000, 20900, 20640}, false});
  EXPECT_TRUE(memory.Write());
  Open();
  EXPECT_LT(Main().GetPosition().x, 10000) << "that screen is gone";
  Frame->Hide();
  Watch().FloatControlBar(wxRect(1000, 500, 500, 300));
  WaitForActivation(Watch());
  const wxRect all =
      Main().GetRect().Union(Watch().GetParentMiniFrame()->GetRect()).Intersect(wxGetClientDisplayRect());
  SavePicture(Main(), TestFolder() / "picture.png");
  const std::string size = ReadFile(TestFolder() / "picture.png").substr(16, 8);
  EXPECT_EQ(size, HighFirst(all.width) + HighFirst(all.height));
}

TEST_F(WindowSessionTest, OpensABookAtTheFirstStartAlone) {
  const std::string begun = "raw 30025\nexported 30026\nraw 30022\n";
  EXPECT_TRUE(Log().starts_with(begun + "routed"));
  Close();
  std::filesystem::remove(Given.Work / "TerminalWindows.xml");
  Open();
  EXPECT_TRUE(Log().starts_with(begun + "command\nrouted")) << Log();
  const std::string before = Log();
  auto& restored = MakeBook(L"Book", RunningHost()->GetPluginBarID("Book"));
  restored.ShowControlBar(true);
  Session->Commands().First().Begin();
  EXPECT_EQ(Log(), before) << "the plug-in has brought a book";
  Close();
  Open();
  EXPECT_TRUE(Log().starts_with(begun + "routed")) << "the user has closed the book";
}

TEST_F(WindowSessionTest, ResetBringsBackTheFirstView) {
  MarketWatchGrid& grid = Watch().Grid();
  const std::vector<ColumnPlace> columns = grid.GetPlace().Columns;
  LogBar& messages = Session->GetWindows().Messages();
  const wxRect floating = messages.GetFloatRect();
  WaitForEnd();
  for (const wchar_t* pane : {L"Properties", L"Messages"}) Choose(L"View", pane);
  messages.FloatControlBar(wxRect(20, 20, 300, 300));
  Watch().DockControlBar(DockSide::Top);
  grid.SetColumnWidth(3, 333);
  grid.GetColumnsInfo().SetColumnDisplayPos(0, 3);
  grid.ToggleSortColumn(5);
  grid.SetCurSel(1);
  const std::string selected = grid.Selected()->SecurityID;
  auto& first = MakeBook(L"Book one", RunningHost()->GetPluginBarID("one"));
  auto& second = MakeBook(L"Book two", RunningHost()->GetPluginBarID("two"));
  first.TabControlBar();
  for (auto* book : {&first, &second}) book->ShowControlBar(true);
  Main().Maximize();
  EXPECT_TRUE(PumpUntil([this] { return Main().IsMaximized(); }));
  const std::string before = Log();
  Choose(L"View", L"Reset Windows");
  EXPECT_FALSE(Session->GetWindows().Properties()->IsBarShown() || messages.IsBarShown());
  EXPECT_TRUE(Watch().IsMDITabbed() && second.IsMDITabbed() && first.IsDocked());
  EXPECT_TRUE(grid.IsShownOnScreen()) << "before the other tab";
  // But for the borders, which a maximized window has not.
  EXPECT_TRUE(PumpUntil([this] {
    const wxSize off = Main().GetSize() - Main().FromDIP(wxSize(1280, 800));
    return !Main().IsMaximized() && std::abs(off.x) < 20 && std::abs(off.y) < 60;
  })) << Main().GetSize().x
      << "x" << Main().GetSize().y;
  EXPECT_TRUE(PumpUntil([&] { return first.GetSize().y == 360; })) << first.GetSize().y;
  EXPECT_EQ(messages.GetFloatRect(), floating);
  EXPECT_EQ(grid.GetPlace().Columns, columns);
  EXPECT_FALSE(grid.GetPlace().SortColumn);
  EXPECT_EQ(grid.Selected()->SecurityID, selected);
  EXPECT_EQ(Log(), before);
  for (auto* book : {&first, &second}) book->ShowControlBar(false);
  Choose(L"View", L"Reset Windows");
  EXPECT_EQ(Log(), before + "command\n");
  EXPECT_EQ(grid.Selected()->SecurityID, selected);
}

// Chooses the file in dialogs that ask for one to open; an empty path cancels.
struct FileChoice : wxModalDialogHook {
  explicit FileChoice(const std::filesystem::path& file) : File(file.wstring()) { Register(); }
  ~FileChoice() override { Unregister(); }
  int Enter(wxDialog* dialog) override {
    auto* asking = dynamic_cast<wxFileDialog*>(dialog);
    if (asking == nullptr) return wxID_NONE;
    asking->SetPath(File);
    return !File.empty() && PumpUntil([&] { return asking->GetPath() == File; }) ? wxID_OK : wxID_CANCEL;
  }
  std::wstring File;
};

TEST_F(WindowSessionTest, OpensAnotherDayAndPlaysItTheNextTime) {
  WaitForEnd();
  const auto other = WriteTestFile("other/day2.csv", kTradeHeader + TradeLine("20131008-10:00:00", "9"));
  WriteTestFile("other/securities.csv", kSecurityHeader + std::string("ARCA,IBM,IBM,OTHER,EQ,,XX,0,4\nbad\n"));
  WriteTestFile("other/desk.csv", kDeskHeader + std::string(kDeskLine));
  const auto open = [this](const std::filesystem::path& file) {
    DialogAnswers answers;
    const FileChoice choice(file);
    Choose(L"File", L"Open Day...");
    return answers.Said.size();
  };
  const std::string before = Log();
  EXPECT_EQ(open({}), 0U);
  EXPECT_EQ(open(WriteTestFile("bad.csv", "x")), 1U);
  EXPECT_EQ(Log(), before);
  EXPECT_EQ(open(other), 0U);
  EXPECT_TRUE(PumpUntil([this] { return Watch().Grid().GetVirtualRows() == 1; }));
  WaitForEnd();
  EXPECT_EQ(Log(), before + "raw 30022\nrouted 8112\nmaster OTHER 4\nbars 1\nraw 30020\nrouted 9101 9\n");
  const DaySummary summary = Session->Summary();
  EXPECT_EQ(std::tuple(summary.BadLines, summary.Played.Trades(), summary.ControlMessages), std::tuple(1U, 5U, 4U));
  EXPECT_TRUE(summary.Time.count() > 0 && summary.Time <= WallClock().Now() - Begun);
  Close();
  Given.Day.clear();
  Open();
  EXPECT_EQ(Main().GetTitle(), "Trading Terminal - day2.csv");
  Close();
  // Without that day the sample plays, here to its end.
  std::filesystem::remove(other);
  const auto sample = ProgramFolder() / "sample_day";
  std::filesystem::remove_all(sample);
  std::filesystem::copy(TestFolder(), sample);
  std::filesystem::rename(sample / "day.csv", sample / "trades.csv");
  Given.ExitAfter.emplace().Played = true;
  DialogAnswers answers;
  Open();
  EXPECT_TRUE(PumpUntil([this] { return Session->GetWindows().Frame() == nullptr; }));
  ASSERT_EQ(answers.Said.size(), 1U);
  EXPECT_NE(answers.Said.front().find(L"day2.csv"), std::wstring::npos);
  EXPECT_EQ(Log(), before + "raw 30021\n");
  Session.reset();
  std::filesystem::remove_all(sample);
}

TEST_F(WindowSessionTest, ScriptTakesBooksByTheirTitles) {
  Close();
  std::filesystem::current_path(TestFolder());
  Given.Speed = 1;  // the last trade would come after an hour
  Given.Script = WriteTestFile(
      "script.txt",
      "wait played\nfocus market-watch\nkey F8\nfocus book two\nexpect-text Book two\nplace floating\n"
      "focus market-watch\nexpect-text Book two\nusage one\nusage two\nfocus book one\nclose-book\nselect NONE\n"
      "focus book one\n");
  Open();
  auto& first = MakeBook(L"Book one", RunningHost()->GetPluginBarID("one"));
  auto& second = MakeBook(L"Book two", RunningHost()->GetPluginBarID("two"));
  for (auto* book : {&first, &second}) {
    MakeChild<wxButton>(book, wxID_ANY, book->GetBarTitle());
    book->ShowControlBar(true);
  }
  WaitForActivation(Main());
  Choose(L"Day", L"As Fast As Possible");
  EXPECT_TRUE(PumpUntil([this] { return BadLines.FailedCommands() == 2 && Log().ends_with("command\n"); })) << Log();
  EXPECT_EQ(Without(Reports.str(), PathText(Given.Script)),
            ":13: the command cannot be done now\n:14: the command cannot be done now\n");
  EXPECT_FALSE(first.IsBarShown());
  EXPECT_FALSE(second.IsDocked());
  RunningHost()->ApplicationFocus(&first, true);
  EXPECT_TRUE(PumpUntil([&] { return std::ranges::count(Main().GetDockingManager().Bars(), &first) == 0; }));
  EXPECT_EQ(std::ranges::count(Main().GetDockingManager().Bars(), &second), 1);
  std::string usage = ReadFile(TestFolder() / "out" / "usage.csv");
  EXPECT_TRUE(usage.starts_with("name,heap,handles,windows,books\none,") && usage.ends_with(",2\n")) << usage;
  EXPECT_EQ(usage.rfind("name"), 0U) << "titles once";
  std::ranges::replace(usage, ',', ' ');
  std::uint64_t heap = 0, handles = 0, windows = 0;
  std::istringstream(usage.substr(usage.find("two") + 3)) >> heap >> handles >> windows;
  EXPECT_GE(heap, 100000U);  // handles: Wine counts none
  EXPECT_GT(windows, 2U);
}

}  // namespace
