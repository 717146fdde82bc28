// What the tests of the terminal's windows share: a session with a plug-in that writes down what it is told, and a day
// of four trades.
#pragma once

#include <wx/menu.h>

#include <sstream>

#include "terminal/common/errors.h"
#include "terminal/windows/session/window_session.h"
#include "tests/terminal/test_files.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/system/make_child.h"

using Texts = std::vector<std::string>;

template <typename Target>
std::uint64_t Address(Target* target) {
  return reinterpret_cast<std::uint64_t>(target);
}

// Sends a message of the plug-in with addresses by their tags.
inline void Send(std::uint16_t number, std::initializer_list<std::pair<std::uint16_t, std::uint64_t>> addresses = {}) {
  CQORPacketWriter message(0);
  message.AddU16(10002, number);
  for (const auto& [tag, address] : addresses) message.AddU64(tag, address);
  RunningHost()->PluginDataSend(&message);
}
class WindowSessionTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    Given.Day = WriteDay({"00:00:01", "00:00:02", "00:00:03", "01:00:00"});
    WriteSecurities(std::string("NYSE,BAC,BAC,BANK,EQ,,XX,0,1\n") + kSecurityLine);
    Given.Live = ParseLiveFrom("2");
    Given.SpeedGiven = true;
    Given.Plugin = TestModule("fake_plugin");
    Given.Work = TestFolder() / "work";
    WriteTestFile("work/TerminalWindows.xml", "<R>\n</R>\n");                 // it has been started before
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
  void WaitForEnd() {
    EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  }
  void Close() {
    Main().Close();
    Session.reset();
    EXPECT_EQ(wxTopLevelWindows.GetCount(), 1U) << "the test's own";
  }
  MainFrame& Main() { return *Session->GetWindows().Frame(); }
  PositionsBar& Positions() { return Session->GetWindows().Positions(); }
  MarketWatchBar& Watch() { return Session->GetWindows().Watch(); }
  void Choose(const wchar_t* menu, const wchar_t* entry) { EXPECT_TRUE(Main().RunMenu({menu, entry})) << entry; }
  // The states of the menu's pause, speeds and first four bars.
  std::string Checked() {
    std::string all;
    for (const std::size_t menu : {2, 3})
      for (const wxMenuItem* item : Main().GetMenuBar()->GetMenu(menu)->GetMenuItems())
        if (item->IsCheckable()) all += item->IsChecked() ? '1' : '0';
    return all.substr(0, 9);
  }
  // What the plug-in was told, but for its refreshes.
  std::string Log() { return Without(ReadFile(Given.Work / "fake_plugin.log"), "refresh\n"); }
  void Ask(const void* window) { Send(32022, {{30002, Address(&NoteAnswer)}, {30001, Address(window)}}); }
  // A bar as the plug-in makes it.
  CQORPDockingControlBar& MakeBook(const wchar_t* title, std::uint32_t id) {
    auto& book = MakeChild<CQORPDockingControlBar>();
    EXPECT_TRUE(book.CreateBar(Main().GetDockingManager(), title, wxRect(200, 200, 300, 200), id));
    book.DockControlBar(DockSide::Left);
    return book;
  }

  Options Given;
  std::filesystem::path Home;
  const PlayClock::Time Begun = WallClock().Now();
  std::ostringstream Reports;
  BadLineReport BadLines{Reports};
  std::unique_ptr<WindowSession> Session;
};
