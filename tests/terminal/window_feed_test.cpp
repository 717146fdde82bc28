// Feeds in the terminal's windows: the dialog that connects, status bar, log, and what is remembered.
#include <wx/combobox.h>
#include <wx/menu.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>

#include "platform/locale.h"
#include "terminal/windows/frame/window_tools.h"
#include "terminal/windows/session/window_session.h"
#include "tests/terminal/fake_feed.h"
#include "tests/toolkit/gui_test.h"

namespace {

class WindowFeedTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    Given.Plugin = TestModule("fake_plugin");
    Given.Work = TestFolder() / "work";
    WriteTestFile("work/TerminalWindows.xml", "<R>\n</R>\n");  // it has been started before
    std::filesystem::create_directories(ProgramFolder() / "working_folder");
    std::filesystem::create_directories(Sample);
    std::filesystem::copy_file(WriteSecurities(), Sample / "securities.csv",
                               std::filesystem::copy_options::overwrite_existing);
    Home = std::filesystem::current_path();
  }
  void TearDown() override {
    Session.reset();
    std::filesystem::current_path(Home);
    std::filesystem::remove_all(Sample);
    GuiTest::TearDown();
  }
  void Open() {
    Session = std::make_unique<WindowSession>(FilesOf(Given), Given, BadLines, OpenFake(Plan));
    Session->Open();
  }
  MainFrame& Main() { return *Session->GetWindows().Frame(); }
  std::string State() {
    return Main().GetStatusBar()->GetStatusText(static_cast<int>(StatusField::State)).ToStdString();
  }
  bool ShowsState(const std::string& text) {
    return PumpUntil([&] { return State() == text; });
  }
  std::string Log() { return Without(ReadFile(Given.Work / "fake_plugin.log"), "refresh\n"); }

  const std::filesystem::path Sample = ProgramFolder() / "sample_day";
  FeedPlan Plan;
  Options Given;
  std::filesystem::path Home;
  std::ostringstream Reports;
  BadLineReport BadLines{Reports};
  std::unique_ptr<WindowSession> Session;
};

const std::string kBegun = "raw 30025\nexported 30026\nraw 30022\n";
const std::string kCaughtUp = "routed 8112\nmaster BIG BLUE 2.5\nbars 1\nraw 30020\n";

TEST_F(WindowFeedTest, ShowsStateAlarmsAndTradesAsTheyCome) {
  Given.Day = "nats://desk/trades.20131007";
  Plan.Parts = {FeedTrade(1)};
  Plan.CaughtUpAfter = 2;
  Plan.State = {FeedPhase::Downloading, "reading", 7};
  Open();
  EXPECT_EQ(Main().GetTitle(), "Trading Terminal - trades.20131007");
  EXPECT_TRUE(ShowsState("Downloading, 7 behind")) << State();
  Plan.Parts.push_back(FeedTrade(2));
  Plan.Parts.push_back(FeedTrade(3));
  Plan.State = {FeedPhase::Live, "reading", 0};
  EXPECT_TRUE(ShowsState("Live, trades.20131007")) << State();
  Session->Commands().Run(TerminalCommand::Messages);
  LogGrid& grid = Session->GetWindows().Messages().Grid();
  grid.SetFilterText(static_cast<int>(LogColumn::Direction), L"feed");
  const auto tells = [&grid](int rows) { return PumpUntil([&grid, rows] { return grid.GetVirtualRows() == rows; }); };
  EXPECT_TRUE(tells(2) && PumpUntil([this] { return Session->GetDay().DayTrades() == 3; }));
  EXPECT_EQ(Log(), kBegun + "routed 8111 1\nrouted 8111 2\n" + kCaughtUp + "routed 9101 3\n");
  Plan.Alarms = {{AlarmKind::Gap, "5 to 7"}};
  Plan.State = {FeedPhase::Lost, "no answer", 0};
  EXPECT_TRUE(ShowsState("Lost, 1 alarm: no answer; connecting again")) << State();
  for (const wxMenuItem* item : Main().GetMenuBar()->GetMenu(2)->GetMenuItems())
    EXPECT_NE(item->GetKind() == wxITEM_RADIO, item->IsEnabled()) << "speeds are for files";
  std::string told;
  EXPECT_TRUE(tells(4));
  for (int row = grid.GetVirtualRows() - 1; row >= 0; --row)
    told += WideToCodePage(grid.TextAt(row, static_cast<std::size_t>(LogColumn::Fields))) + "|";
  EXPECT_EQ(told, "Downloading, reading|Live, reading|gap: 5 to 7|Lost: no answer; connecting again|");
  Plan.CaughtUpAfter = 3;
  Session->Commands().Run(TerminalCommand::NewLogin);
  EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().DayTrades() == 3; }));
  EXPECT_EQ(Plan.Made, 2);
  EXPECT_TRUE(Log().ends_with("raw 30022\nrouted 8111 1\nrouted 8111 2\nrouted 8111 3\n" + kCaughtUp)) << Log();
}

// Fills the dialog that is up and presses Enter, once the dialog is there.
struct ConnectTyping {
  explicit ConnectTyping(std::vector<std::wstring> addresses) : Addresses(std::move(addresses)) {
    Timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Type(); });
    Timer.Start(20);
  }
  void Type() {
    wxDialog* dialog = ModalDialog();
    auto* address = dialog == nullptr ? nullptr : FindChild<wxComboBox>(*dialog, [](const auto&) { return true; });
    if (address == nullptr) return;
    Offered = address->GetStrings();
    for (wxWindow* child : address->GetParent()->GetChildren()) Said += child->GetLabel() + L"|";
    if (Next == Addresses.size()) return dialog->EndModal(wxID_CANCEL);
    address->SetValue(Addresses[Next++]);
    wxCommandEvent enter(wxEVT_TEXT_ENTER, address->GetId());
    address->GetEventHandler()->ProcessEvent(enter);
  }
  std::vector<std::wstring> Addresses;
  std::size_t Next = 0;
  wxArrayString Offered;
  wxString Said;
  wxTimer Timer;
};

TEST_F(WindowFeedTest, ConnectsByTheDialogAndComesBackAtTheNextStart) {
  Given.Day = WriteDay({"00:00:01"});
  Open();
  {
    ConnectTyping typing({L"day.csv", L"nats://bad/trades.20131007", L" nats://desk/trades.20131007 "});
    EXPECT_TRUE(Main().RunMenu({L"File", L"Connect..."}));
    EXPECT_EQ(typing.Next, 3U) << "the dialog stays until the address is right";
    for (const wchar_t* fault : {L"|An address begins with nats://, tls:// or fix:|", L"|there is no such log|"})
      EXPECT_NE(typing.Said.find(fault), wxString::npos) << typing.Said;
  }
  EXPECT_EQ(Plan.Made, 1);
  EXPECT_TRUE(ShowsState("Live, trades.20131007")) << State();
  Main().Close();
  Session.reset();
  EXPECT_EQ(Plan.Ended, 1);
  Given.Day.clear();
  Open();
  EXPECT_TRUE(ShowsState("Live, trades.20131007")) << State();
  ConnectTyping typing({});
  EXPECT_TRUE(Main().RunMenu({L"File", L"Connect..."}));
  EXPECT_EQ(typing.Offered.size(), 1U);
  EXPECT_EQ(Plan.Made, 2);
}

}  // namespace
