// The terminal's windows with a plug-in that writes down what it is told.
#include "terminal/windows/session/window_session.h"

#include <wx/menu.h>
#include <wx/propgrid/propgrid.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <sstream>

#include "host_link/messages/packet_reader.h"
#include "terminal/common/errors.h"
#include "terminal/windows/drivers/screen_picture.h"
#include "tests/terminal/test_files.h"
#include "tests/toolkit/dialog_answers.h"
#include "tests/toolkit/gui_test.h"

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
    Given.Day = WriteDay({"00:00:01", "00:00:02", "00:00:03", "01:00:00"});
    WriteSecurities(std::string("NYSE,BAC,BAC,BANK,EQ,,XX,0,1\n") + kSecurityLine);
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

TEST_F(WindowSessionTest, MenuPlaysTheDay) {
  const auto choose = [this](const wchar_t* menu, const wchar_t* entry) {
    EXPECT_TRUE(Session->GetWindows().Frame()->RunMenu({menu, entry})) << entry;
    EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  };
  const std::string trades = "routed 8111 1\nrouted 8111 2\n" + kDownload + "routed 9101 3\nrouted 9101 4\n";
  choose(L"Day", L"As Fast As Possible");
  std::string told = "raw 30025\nexported 30026\nraw 30022\n" + trades;
  EXPECT_EQ(Log(), told);
  choose(L"Day", L"New Login");
  told += "raw 30022\nrouted 8111 1\nrouted 8111 2\nrouted 8111 3\nrouted 8111 4\n" + kDownload;
  EXPECT_EQ(Log(), told);
  Session->GetWindows().Watch().Grid().Select("IBM");
  choose(L"Day", L"Start Again");
  told += "raw 30022\n" + trades;
  EXPECT_EQ(Log(), told);
  EXPECT_EQ(Session->GetWindows().Watch().Grid().Selected()->Trades, 4U) << "those before are forgotten";
  choose(L"Day", L"Refresh Books");
  EXPECT_EQ(Log(), told + "raw 30020\n");
  Session->GetWindows().Frame()->Close();
  EXPECT_EQ(Log(), told + "raw 30020\nraw 30021\n");
  Pump();
  EXPECT_EQ(Session->GetWindows().Frame(), nullptr);
  EXPECT_TRUE(std::filesystem::exists(Given.Work / "TerminalWindows.xml"));
}

TEST_F(WindowSessionTest, MenuShowsHowThingsStand) {
  wxMenuBar& bar = *Session->GetWindows().Frame()->GetMenuBar();
  const auto item = [&bar](const wchar_t* menu, const wchar_t* entry) {
    return bar.FindItem(bar.FindMenuItem(menu, entry));
  };
  const auto checked = [&] {
    std::string all;
    for (const auto& [menu, entry] : {std::pair(L"Day", L"Pause"),
                                      {L"Day", L"Real Time"},
                                      {L"Day", L"10 Times"},
                                      {L"Day", L"60 Times"},
                                      {L"Day", L"As Fast As Possible"},
                                      {L"View", L"Market Watch"},
                                      {L"View", L"Properties"},
                                      {L"View", L"Messages"}})
      all += item(menu, entry)->IsChecked() ? '1' : '0';
    return all;
  };
  MenuCommands& commands = Session->Commands();
  EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  EXPECT_EQ(checked(), "00001100");
  EXPECT_FALSE(item(L"Day", L"Pause")->IsEnabled()) << "the day is over";
  const std::pair<TerminalCommand, const char*> runs[] = {
      {TerminalCommand::SixtyTimes, "00010100"},  {TerminalCommand::RealTime, "01000100"},
      {TerminalCommand::TenTimes, "00100100"},    {TerminalCommand::PlayOrPause, "10100100"},
      {TerminalCommand::PlayOrPause, "00100100"}, {TerminalCommand::MarketWatch, "00100000"},
      {TerminalCommand::Properties, "00100010"},  {TerminalCommand::Messages, "00100011"},
  };
  for (const auto& [command, states] : runs) {
    commands.Run(command);
    EXPECT_EQ(checked(), states) << static_cast<int>(command);
  }
  commands.Run(TerminalCommand::StartAgain);
  EXPECT_TRUE(item(L"Day", L"Pause")->IsEnabled() || PumpUntil([&] { return item(L"Day", L"Pause")->IsEnabled(); }));
  DialogAnswers answers;
  commands.Run(TerminalCommand::Keys);
  commands.Run(TerminalCommand::About);
  ASSERT_EQ(answers.Said.size(), 2U);
  EXPECT_NE(answers.Said[0].find(L"F8: Fake Book Enter: the same"), std::wstring::npos) << answers.Said[0];
  EXPECT_NE(answers.Said[0].find(L"Ctrl+B: Start Again "), std::wstring::npos);
  EXPECT_NE(answers.Said[1].find(L"Plug-in: Fake fake_plugin"), std::wstring::npos) << answers.Said[1];
}

TEST_F(WindowSessionTest, OpensABookByMenuKeyAndClick) {
  const auto commands = [this] {
    const std::string log = Log();
    return (log.size() - Without(log, "command\n").size()) / 8;
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

TEST_F(WindowSessionTest, AnswersWhatIsSelectedInABar) {
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

TEST_F(WindowSessionTest, ShowsPropertiesWhileTheBookIsShown) {
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
}

TEST_F(WindowSessionTest, KeepsPlacesAndSort) {
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

TEST_F(WindowSessionTest, PlaysTheLastDayAgain) {
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

TEST_F(WindowSessionTest, CountsFailedCommandsApart) {
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

}  // namespace
