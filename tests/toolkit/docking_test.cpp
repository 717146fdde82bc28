#include <wx/aui/auibook.h>
#include <wx/aui/framemanager.h>
#include <wx/menu.h>
#include <wx/textctrl.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include "grid_base/settings/xml_settings.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/system/make_child.h"

namespace {

const wxRect kFloatRect(220, 150, 420, 260);

class NotedBar : public CQORPDockingControlBar {
 public:
  NotedBar() { ++Living; }
  ~NotedBar() override { --Living; }
  void OnPressCloseButton() override { ++ClosePresses, Goes ? CQORPDockingControlBar::OnPressCloseButton() : void(); }
  int OnTabCloseButton() override { return ++TabClosePresses, Goes; }
  bool PreTranslateMessage(wxKeyEvent& event) override {
    return Keys.push_back(event.GetKeyCode()), Keys.back() == WXK_ESCAPE;
  }
  void OnBarFocus() override { ++FocusCount; }
  void OnBarMoved() override { ++MoveCount; }

  static inline int Living = 0;
  int ClosePresses = 0, TabClosePresses = 0, Goes = 1, FocusCount = 0, MoveCount = 0;
  std::vector<int> Keys;
  wxTextCtrl* Edit = nullptr;
};

class DockingTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    Main = &MakeChild<CQORPFrame>(nullptr, wxID_ANY, L"Terminal", wxRect(60, 40, 1000, 640));
    Main->Show();
    ASSERT_TRUE(PumpUntil([this] { return Main->IsShownOnScreen(); }));
    Bar = MakeBar(L"Book 1", Main->GetDockingManager());
  }
  void TearDown() override {
    if (Main != nullptr) Main->Destroy();
    GuiTest::TearDown();
    EXPECT_EQ(NotedBar::Living, 0);
  }
  NotedBar* MakeBar(const std::wstring& caption, CQORPDockingManager& manager, const char* place = "-") {
    NotedBar& bar = MakeChild<NotedBar>();
    EXPECT_TRUE(bar.CreateBar(manager, caption, kFloatRect, 30029));
    bar.Edit = &MakeChild<wxTextCtrl>(&bar, wxID_ANY, wxEmptyString, wxPoint(5, 5));
    Move(&bar, {place});
    if (*place != '-') Move(&bar, {"+"});
    return &bar;
  }
  NotedBar* MakeBar(const char* place) { return MakeBar(L"Other", Main->GetDockingManager(), place); }
  wxAuiPaneInfo& Pane(const auto& of) { return wxAuiManager::GetManager(Main)->GetPane(of); }
  wxAuiNotebook& Tabs() { return dynamic_cast<wxAuiNotebook&>(*Pane(L"tabs").window); }
  // The state of the bar on the screen: f for floating, d with the side for docked, t for tabbed, - for hidden.
  std::string Standing(NotedBar* bar) {
    std::string text = bar->IsBarShown() ? "" : "-";
    if (bar->IsFloating()) text += "f";
    if (bar->IsMDITabbed()) text += "t";
    if (bar->IsDocked()) text += {'d', "?trbl"[Pane(bar).dock_direction]};
    EXPECT_EQ(bar->GetParentMDIChild() != nullptr, bar->IsMDITabbed());
    EXPECT_EQ(bar->IsShownOnScreen(), bar->IsBarShown());
    return text;
  }
  // Moves the bar to each place that Standing tells as that text; + shows it.
  static void Move(NotedBar* bar, std::initializer_list<std::string> places) {
    for (const std::string& place : places) {
      if (place == "-" || place == "+") bar->ShowControlBar(place == "+");
      if (place == "f") bar->FloatControlBar(bar->GetFloatRect());
      if (place == "t") bar->TabControlBar();
      if (place[0] == 'd') bar->DockControlBar(static_cast<DockSide>(std::string_view("lrtb").find(place[1])));
      Pump();
    }
  }

  CQORPFrame* Main = nullptr;
  NotedBar* Bar = nullptr;
};

TEST_F(DockingTest, MovesToEachPlaceAndComesBackToIt) {
  const std::pair<const char*, const char*> steps[] = {
      {"-", "-"},   {"+", "f"},  {"dl", "dl"}, {"-", "-"}, {"+", "dl"}, {"dr", "dr"}, {"dt", "dt"},
      {"db", "db"}, {"t", "t"},  {"t", "t"},   {"-", "-"}, {"+", "t"},  {"f", "f"},   {"-", "-"},
      {"dt", "-"},  {"+", "dt"}, {"-", "-"},   {"t", "-"}, {"+", "t"},  {"f", "f"},
  };
  for (const auto& [move, expected] : steps) {
    SCOPED_TRACE(testing::Message() << move << " from " << Standing(Bar));
    Move(Bar, {move});
    EXPECT_EQ(Standing(Bar), expected);
    EXPECT_EQ(Bar->GetFloatRect(), kFloatRect);
    EXPECT_EQ(Main->GetDockingManager().BarOf(Bar->Edit), Bar);
    EXPECT_EQ(Tabs().GetPageCount(), Bar->IsMDITabbed() ? 1U : 0U);
  }
  EXPECT_GT(Bar->MoveCount, 0);
  EXPECT_TRUE(PumpUntil([this] { return Bar->GetParentMiniFrame()->GetScreenRect() == kFloatRect; }));
  Bar->GetParentMiniFrame()->SetSize(140, 90);  // docking leaves no larger least size behind
  EXPECT_EQ(Bar->GetFloatRect().GetSize(), wxSize(140, 90));
}

TEST_F(DockingTest, DocksBehindTheBarsOfASide) {
  const NotedBar* bars[] = {MakeBar("dl"), MakeBar("dl"), MakeBar("dl")};
  EXPECT_TRUE(bars[0]->GetRect().GetBottom() < bars[1]->GetRect().y &&
              bars[1]->GetRect().GetBottom() < bars[2]->GetRect().y);
  EXPECT_NEAR(bars[0]->GetSize().x, kFloatRect.width, 2);
  EXPECT_EQ(bars[0]->GetPosition().x, 1) << "a bar has a frame of one pixel, the tabs have none";
  EXPECT_EQ(Tabs().GetRect().GetTopRight(), wxPoint(Main->GetClientSize().x - 1, 0));
}

TEST_F(DockingTest, ShowsItsTitleAtEachPlace) {
  MakeBar("t");
  Bar->ShowControlBar(true);
  Bar->SetBarTitle(L"Trade Book : All");
  EXPECT_EQ(Bar->GetParentMiniFrame()->GetTitle(), L"Trade Book : All");
  Bar->TabControlBar();
  EXPECT_EQ(Bar->GetParentMDIChild()->GetTitle(), L"Trade Book : All");
  Bar->SetBarTitle(L"A & B");
  EXPECT_EQ(Bar->GetParentMDIChild()->GetTitle() + L", " + Tabs().GetPageText(1).ToStdWstring(), L"A & B, A & B");
  Bar->GetParentMDIChild()->SetTitle(L"Page");
  EXPECT_EQ(Tabs().GetPageText(0) + L", " + Tabs().GetPageText(1), L"Other, Page");
  Bar->DockControlBar(DockSide::Left);
  EXPECT_EQ(Pane(Bar).caption, L"A & B");
}

TEST_F(DockingTest, CloseButtonsAskTheBar) {
  wxAuiNotebookEvent tab(wxEVT_AUINOTEBOOK_PAGE_CLOSE, Tabs().GetId());
  tab.SetSelection(0);
  wxAuiManagerEvent pane(wxEVT_AUI_PANE_BUTTON);
  pane.SetManager(wxAuiManager::GetManager(Main));
  pane.SetButton(wxAUI_BUTTON_CLOSE);
  for (const std::string place : {"f", "dl", "t"}) {
    Move(Bar, {place, "+"});
    for (Bar->Goes = 0; Bar->Goes <= 1; ++Bar->Goes) {
      pane.SetPane(&Pane(Bar));
      if (place == "f") Bar->GetParentMiniFrame()->Close();
      if (place == "dl") pane.GetManager()->OnPaneButton(pane);
      if (place == "t") Tabs().GetEventHandler()->ProcessEvent(tab);
      Pump();
      EXPECT_EQ(Standing(Bar), Bar->Goes == 0 ? place : "-");
    }
  }
  EXPECT_FALSE(tab.IsAllowed());
  EXPECT_EQ(std::pair(Bar->ClosePresses, Bar->TabClosePresses), std::pair(4, 2));
}

// The entries of a menu, checked ones in brackets, disabled ones not at all.
wxString EntriesOf(const wxMenu& menu) {
  wxString text;
  for (const wxMenuItem* item : menu.GetMenuItems()) {
    const wxString label = item->IsEnabled() ? item->GetItemLabelText() : wxString();
    text += item->IsCheckable() && item->IsChecked() ? L"[" + label + L"]" : label;
  }
  return text;
}

// With the pointer and the keyboard of the display, on a caption or a tab.
TEST_F(DockingTest, ARightClickOpensTheMenuOfTheBar) {
  ASSERT_TRUE(GiveRealFocus(*Main));
  wxString entries;
  wxUIActionSimulator user;
  int key = 0, x = 20;
  wxTimer typist;  // a key that comes before the menu listens is lost
  typist.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { user.Char(key); });
  Main->Bind(wxEVT_MENU_OPEN, [&](wxMenuEvent& event) { entries = EntriesOf(*event.GetMenu()), typist.Start(20); });
  Main->Bind(wxEVT_MENU_CLOSE, [&](wxMenuEvent&) { typist.Stop(); });
  Move(Bar, {"dr", "+"});
  const wchar_t *ofDocked = L"Floating[Docking]TabbedHide", *ofTabbed = L"FloatingDocking[Tabbed]Hide";
  const std::tuple<int, const char*, const wchar_t*> rows[] = {{WXK_ESCAPE, "dr", ofDocked},
                                                               {'T', "t", ofDocked},
                                                               {'D', "dr", ofTabbed},
                                                               {'D', "dr", ofDocked},
                                                               {'H', "-", ofDocked}};
  for (const auto& [choice, place, shown] : rows) {
    SCOPED_TRACE(testing::Message() << choice << " from " << Standing(Bar));
    key = choice;
    entries.clear();
    const wxWindow& page = Bar->IsMDITabbed() ? *Bar->GetParent() : *Bar;
    // A click is lost while the window manager still moves the window: one more after each hundred looks.
    EXPECT_TRUE(PumpUntil([&, looks = 0]() mutable {
      if (looks++ % 100 == 0 && entries.empty()) {
        user.MouseMove(page.GetScreenPosition() + wxPoint(x += 9, -8));  // two clicks at one place are a double click
        Pump();
        user.MouseClick(wxMOUSE_BTN_RIGHT);
      }
      return !entries.empty() && !typist.IsRunning();
    }));
    EXPECT_EQ(Standing(Bar), place);
    EXPECT_EQ(entries, shown);
  }
  EXPECT_EQ(Bar->ClosePresses, 1);
  Move(Bar, {"+"});
  wxContextMenuEvent menuKey(wxEVT_CONTEXT_MENU, Bar->GetId(), wxDefaultPosition);
  menuKey.SetEventObject(Bar);
  EXPECT_FALSE(Bar->GetEventHandler()->ProcessEvent(menuKey)) << "the key is for what has the focus";
  DoubleClick(*Main, Bar->GetPosition() + wxPoint(20, -8));
  EXPECT_EQ(Standing(Bar), "f");
}

TEST_F(DockingTest, KeysGoToTheBarWithTheFocusFirst) {
  NotedBar* other = MakeBar("db");
  Bar->ShowControlBar(true);
  for (const char* place : {"dl", "f", "t"}) {
    SCOPED_TRACE(place);
    Move(Bar, {place});
    ASSERT_TRUE(GiveRealFocus(*Bar->Edit));
    Bar->Keys.clear();
    for (const int key : {int{WXK_F8}, int{WXK_ESCAPE}}) Press(*Bar->Edit, key);
    Press(*Bar->Edit, 'F', kAlt);
    EXPECT_EQ(Bar->Keys, (std::vector<int>{WXK_F8, WXK_ESCAPE}));
  }
  EXPECT_TRUE(other->Keys.empty() && Bar->FocusCount >= 3);
}

TEST_F(DockingTest, KeepsItsStateUnderTheSection) {
  CVELDPXMLSettings settings;
  const std::wstring section = L"Trade Book : AllTradeBook 1";
  EXPECT_FALSE(Bar->LoadState(settings, section, 1, 7));
  Bar->ShowControlBar(true);
  NotedBar* other = MakeBar("-");
  std::wstring text;
  for (const char* place : {"f", "db", "t", "-"}) {
    SCOPED_TRACE(place);
    Move(Bar, {place});
    ASSERT_TRUE(Bar->SaveState(settings, section, 1, 7) && settings.OpenPath(section));
    EXPECT_TRUE(settings.Read(L"Bar-1", text));
    other->FloatControlBar(wxRect(400, 300, 200, 100));
    ASSERT_TRUE(other->LoadState(settings, section, 1, 7) && !other->LoadState(settings, section, 2, 7));
    Pump();
    EXPECT_EQ(std::pair(Standing(other), other->GetFloatRect()), std::pair(std::string(place), kFloatRect));
  }
  EXPECT_TRUE(text.starts_with(L"1;tabbed;0;220;150;420;260;bottom;0;0;0;")) << wxString(text);
  const auto load = [&](const wchar_t* line) {
    EXPECT_TRUE(settings.CreatePath(section) && settings.Write(L"Bar-1", std::wstring(line)));
    return Bar->LoadState(settings, section, 1, 7);
  };
  EXPECT_FALSE(load(L"1;docked;1;220;150;420;260;middle;0;0;0;0;300;200"));
  EXPECT_TRUE(load(L"1;floating;1;20000;20000;420;260;left;32767;32767;32767;0;1;1"));
  EXPECT_EQ(Bar->GetFloatRect(), wxRect(100, 100, 420, 260)) << "it was off every display";
  for (const auto& [side, px] : {std::pair(L"left", 300), {L"left", 850}, {L"bottom", 300}, {L"bottom", 500}}) {
    const std::wstring size = std::to_wstring(px);
    EXPECT_TRUE(load((L"1;docked;1;220;150;420;260;" + (side + (L";0;0;0;0;" + size)) + L";" + size).c_str()));
    EXPECT_EQ(Standing(Bar), *side == L'l' ? "dl" : "db");
    EXPECT_NEAR(*side == L'l' ? Bar->GetSize().x : Bar->GetSize().y, px, 2);
  }
  Bar->EnableDocking(false);
  Bar->FloatControlBar(kFloatRect);
  EXPECT_TRUE(load(L"1;docked;1;220;150;420;260;left;0;0;0;0;300;200"));
  EXPECT_EQ(Standing(Bar), "f");
}

TEST_F(DockingTest, BarsGoAloneOrWithTheirFrame) {
  CQORPDockingManager& manager = Main->GetDockingManager();
  NotedBar *tabbed = MakeBar("t"), *docked = MakeBar("dl"), *floating = MakeBar("f"), *last = MakeBar("f");
  for (int i = 0; i < 2; ++i) manager.DestroyBar(tabbed);  // there is none the second time
  docked->Destroy();
  delete floating;
  EXPECT_EQ(NotedBar::Living, 2);
  EXPECT_EQ(manager.Bars(), (std::vector<CQORPDockingControlBar*>{Bar, last}));
  EXPECT_EQ(Tabs().GetPageCount(), 0U);
  Pump();
  Move(Bar, {"t", "+"});  // its frame goes with one tabbed and one floating bar
}

TEST_F(DockingTest, TheFrameOfAProcessGoesWithItsBars) {
  EXPECT_EQ(CQORPDockingManager::ForProcess(), &Main->GetDockingManager());
  std::exchange(Main, nullptr)->Destroy();
  Pump();
  CQORPDockingManager* own = CQORPDockingManager::ForProcess();
  ASSERT_TRUE(own != nullptr && CQORPDockingManager::ForProcess() == own && !own->Frame().IsShown());
  NotedBar *tabbed = MakeBar(L"Tabbed", *own, "t"), *docked = MakeBar(L"Docked", *own, "dl");
  for (const int goes : {0, 1}) {
    EXPECT_TRUE(own->Frame().IsShown() && tabbed->IsBarShown());
    tabbed->Goes = goes;
    own->Frame().Close();
    EXPECT_FALSE(docked->IsBarShown());
  }
  EXPECT_FALSE(own->Frame().IsShown() || tabbed->IsBarShown());
  EXPECT_TRUE(tabbed->TabClosePresses == 2 && docked->ClosePresses == 1) << "a hidden bar is not asked again";
  tabbed->ShowControlBar(true);
  EXPECT_TRUE(own->Frame().IsShown());
  own->Frame().Destroy();
  Pump();
}

}  // namespace
