#include <wx/aui/auibook.h>
#include <wx/aui/framemanager.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <functional>

#include "grid_base/settings/registry_store.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/system/make_child.h"

namespace {

const wxRect kFloatRect(220, 150, 420, 260);

class NotedBar : public CQORPDockingControlBar {
 public:
  explicit NotedBar(int& living) : Living(living) { ++Living; }
  ~NotedBar() override { --Living; }
  void OnPressCloseButton() override {
    ++ClosePresses;
    CQORPDockingControlBar::OnPressCloseButton();
  }
  int OnTabCloseButton() override {
    ++TabClosePresses;
    return TabGoes;
  }
  bool PreTranslateMessage(wxKeyEvent& event) override {
    Keys.push_back(event.GetKeyCode());
    return event.GetKeyCode() == WXK_ESCAPE;
  }
  void OnBarFocus() override { ++FocusCount; }
  void OnBarMoved() override { ++MoveCount; }

  int& Living;
  int ClosePresses = 0, TabClosePresses = 0, TabGoes = 1, FocusCount = 0, MoveCount = 0;
  std::vector<int> Keys;
  wxTextCtrl* Edit = nullptr;
};

class DockingTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    if (IsSkipped()) return;
    Main = &MakeChild<CQORPFrame>(nullptr, wxID_ANY, L"Terminal", wxRect(60, 40, 1000, 640));
    Main->Show();
    ASSERT_TRUE(PumpUntil([this] { return Main->IsShownOnScreen(); }));
    Bar = MakeBar(L"Book 1");
  }
  void TearDown() override {
    if (Main != nullptr) Main->Destroy();
    Pump();
    EXPECT_EQ(Living, 0);
    std::filesystem::remove(SettingsFile);
    GuiTest::TearDown();
  }
  NotedBar* MakeBar(const std::wstring& caption) { return MakeBar(caption, Main->GetDockingManager()); }
  NotedBar* MakeBar(const std::wstring& caption, CQORPDockingManager& manager) {
    NotedBar& bar = MakeChild<NotedBar>(Living);
    EXPECT_TRUE(bar.CreateBar(manager, caption, kFloatRect, 30029));
    bar.Edit = &MakeChild<wxTextCtrl>(&bar, wxID_ANY, wxEmptyString, wxPoint(5, 5));
    return &bar;
  }
  wxAuiNotebook& Tabs() {
    for (wxWindow* child : Main->GetChildren())
      if (auto* tabs = dynamic_cast<wxAuiNotebook*>(child)) return *tabs;
    ADD_FAILURE() << "no tabs";
    std::abort();
  }
  wxAuiPaneInfo& Pane(NotedBar* bar) { return wxAuiManager::GetManager(Main)->GetPane(bar); }
  // The state of the bar on the screen: f for floating, d with the side for docked, t for tabbed, - for hidden.
  std::string Standing(NotedBar* bar) {
    std::string text = bar->IsBarShown() ? "" : "-";
    if (bar->IsFloating()) text += "f";
    if (bar->IsMDITabbed()) text += "t";
    if (bar->IsDocked()) text += "d" + std::string(1, SideOnScreen(bar));
    EXPECT_EQ(bar->GetParentMiniFrame() != nullptr, bar->IsFloating());
    EXPECT_EQ(bar->GetParentMDIChild() != nullptr, bar->IsMDITabbed());
    EXPECT_EQ(bar->IsShownOnScreen(), bar->IsBarShown());
    EXPECT_EQ(bar->Edit->GetParent(), bar);
    return text;
  }
  // Moves the bar to the place that Standing tells as that text; + shows it.
  static void Move(NotedBar* bar, const std::string& place) {
    constexpr std::string_view kSides = "lrtb";
    if (place == "-") bar->ShowControlBar(false);
    if (place == "+") bar->ShowControlBar(true);
    if (place == "f") bar->FloatControlBar(bar->GetFloatRect());
    if (place == "t") bar->TabControlBar();
    if (place[0] == 'd') bar->DockControlBar(static_cast<DockSide>(kSides.find(place[1])));
    Pump();
  }
  char SideOnScreen(NotedBar* bar) {
    const wxRect middle = Tabs().GetScreenRect(), place = bar->GetScreenRect();
    if (place.GetRight() < middle.x) return 'l';
    if (place.x > middle.GetRight()) return 'r';
    return place.GetBottom() < middle.y ? 't' : place.y > middle.GetBottom() ? 'b' : '?';
  }
  void PressPaneClose(NotedBar* bar) {
    wxAuiManagerEvent event(wxEVT_AUI_PANE_BUTTON);
    event.SetManager(wxAuiManager::GetManager(Main));
    event.SetPane(&Pane(bar));
    event.SetButton(wxAUI_BUTTON_CLOSE);
    event.GetManager()->OnPaneButton(event);
    Pump();
  }
  void PressTabClose(NotedBar* bar) {
    wxAuiNotebookEvent event(wxEVT_AUINOTEBOOK_PAGE_CLOSE, Tabs().GetId());
    event.SetSelection(Tabs().FindPage(bar->GetParentMDIChild()));
    event.SetEventObject(&Tabs());
    Tabs().GetEventHandler()->ProcessEvent(event);
    EXPECT_FALSE(event.IsAllowed());
    Pump();
  }

  const std::filesystem::path SettingsFile = std::filesystem::current_path() / "docking_test_settings.xml";
  int Living = 0;
  CQORPFrame* Main = nullptr;
  NotedBar* Bar = nullptr;
};

TEST_F(DockingTest, MovesToEachPlaceAndComesBackToIt) {
  EXPECT_EQ(Standing(Bar), "-");
  const std::pair<const char*, const char*> steps[] = {
      {"+", "f"},  {"dl", "dl"}, {"-", "-"}, {"+", "dl"},  {"dr", "dr"}, {"dt", "dt"}, {"db", "db"}, {"t", "t"},
      {"t", "t"},  {"-", "-"},   {"+", "t"}, {"dl", "dl"}, {"f", "f"},   {"t", "t"},   {"f", "f"},   {"-", "-"},
      {"dt", "-"}, {"+", "dt"},  {"-", "-"}, {"t", "-"},   {"+", "t"},   {"f", "f"},
  };
  for (const auto& [move, expected] : steps) {
    SCOPED_TRACE(testing::Message() << move << " from " << Standing(Bar));
    Bar->MoveCount = 0;
    Move(Bar, move);
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
  NotedBar* bars[] = {Bar, MakeBar(L"Second"), MakeBar(L"Third")};
  for (NotedBar* bar : bars) {
    bar->DockControlBar(DockSide::Left);
    bar->ShowControlBar(true);
  }
  Pump();
  EXPECT_LT(bars[0]->GetScreenPosition().y, bars[1]->GetScreenPosition().y);
  EXPECT_LT(bars[1]->GetScreenPosition().y, bars[2]->GetScreenPosition().y);
  EXPECT_EQ(Pane(bars[2]).dock_pos, 2);
  EXPECT_EQ(bars[0]->GetPosition().x, 1) << "a bar has a frame of one pixel, the tabs have none";
  EXPECT_EQ(Tabs().GetRect().GetRight(), Main->GetClientSize().x - 1);
  EXPECT_EQ(Tabs().GetPosition().y, 0);
}

TEST_F(DockingTest, ShowsItsTitleAtEachPlace) {
  NotedBar* other = MakeBar(L"Other");
  other->TabControlBar();
  other->ShowControlBar(true);
  Bar->ShowControlBar(true);
  Bar->SetBarTitle(L"Trade Book : All");
  EXPECT_EQ(Bar->GetParentMiniFrame()->GetTitle(), L"Trade Book : All");
  Bar->TabControlBar();
  EXPECT_EQ(Bar->GetParentMDIChild()->GetTitle(), L"Trade Book : All");
  Bar->SetBarTitle(L"A & B");
  EXPECT_EQ(Tabs().GetPageText(1), L"A & B");
  EXPECT_EQ(Bar->GetParentMDIChild()->GetTitle(), L"A & B");
  Bar->GetParentMDIChild()->SetTitle(L"Page");
  EXPECT_EQ(Tabs().GetPageText(1), L"Page");
  EXPECT_EQ(Tabs().GetPageText(0), L"Other");
  Bar->DockControlBar(DockSide::Left);
  EXPECT_EQ(Pane(Bar).caption, L"A & B");
  EXPECT_EQ(Bar->GetBarName(), L"Book 1");
  EXPECT_EQ(Bar->GetDlgCtrlID(), 30029U);
}

TEST_F(DockingTest, CloseButtonsAskTheBar) {
  Bar->ShowControlBar(true);
  Bar->GetParentMiniFrame()->Close();
  Pump();
  EXPECT_EQ(Standing(Bar), "-");
  Bar->DockControlBar(DockSide::Left);
  Bar->ShowControlBar(true);
  PressPaneClose(Bar);
  EXPECT_EQ(Standing(Bar), "-");
  Bar->TabControlBar();
  Bar->ShowControlBar(true);
  Bar->TabGoes = 0;
  PressTabClose(Bar);
  EXPECT_EQ(Standing(Bar), "t");
  Bar->TabGoes = 1;
  PressTabClose(Bar);
  EXPECT_EQ(Standing(Bar), "-");
  EXPECT_EQ(Bar->ClosePresses, 2);
  EXPECT_EQ(Bar->TabClosePresses, 2);
}

TEST_F(DockingTest, KeysGoToTheBarWithTheFocusFirst) {
  NotedBar* other = MakeBar(L"Other");
  other->DockControlBar(DockSide::Bottom);
  other->ShowControlBar(true, false);
  int atFrame = 0;
  Main->Bind(wxEVT_CHAR_HOOK, [&atFrame](wxKeyEvent& event) { ++atFrame, event.Skip(); });
  Bar->ShowControlBar(true);
  for (const char* place : {"dl", "f", "t"}) {
    SCOPED_TRACE(place);
    Move(Bar, place);
    ASSERT_TRUE(GiveRealFocus(*Bar->Edit));
    Bar->Keys.clear();
    atFrame = 0;
    for (const int key : {int{WXK_F8}, int{WXK_ESCAPE}}) Press(*Bar->Edit, key);
    Press(*Bar->Edit, 'F', kAlt);
    EXPECT_EQ(Bar->Keys, (std::vector<int>{WXK_F8, WXK_ESCAPE}));
    EXPECT_EQ(atFrame, 3);  // this handler comes before the manager's
  }
  EXPECT_TRUE(other->Keys.empty());
  EXPECT_GE(Bar->FocusCount, 3);
}

TEST_F(DockingTest, KeepsItsStateUnderTheSection) {
  const auto settings = RegistryStore::Make(SettingsFile)->Open(0, 0);
  const std::wstring section = L"Trade Book : AllTradeBook 1";
  EXPECT_FALSE(Bar->LoadState(*settings, section, 1, 7));
  const std::pair<const char*, const wchar_t*> rows[] = {
      {"f", L"1;floating;1;220;150;420;260;left;0;0;0;"},
      {"db", L"1;docked;1;220;150;420;260;bottom;0;0;0;"},
      {"t", L"1;tabbed;1;220;150;420;260;bottom;0;0;0;"},
      {"-", L"1;tabbed;0;220;150;420;260;bottom;0;0;0;"},
  };
  Bar->ShowControlBar(true);
  NotedBar* other = MakeBar(L"Other");
  std::wstring text;
  for (const auto& [place, line] : rows) {
    SCOPED_TRACE(place);
    Move(Bar, place);
    EXPECT_TRUE(Bar->SaveState(*settings, section, 1, 7));
    ASSERT_TRUE(settings->OpenPath(section) && settings->Read(L"Bar-1", text));
    EXPECT_TRUE(text.starts_with(line));
    other->FloatControlBar(wxRect(400, 300, 200, 100));
    ASSERT_TRUE(other->LoadState(*settings, section, 1, 7));
    Pump();
    EXPECT_EQ(Standing(other), place);
    EXPECT_EQ(other->GetFloatRect(), kFloatRect);
    EXPECT_FALSE(other->LoadState(*settings, section, 2, 7));
  }
  const auto load = [&](const wchar_t* line) {
    EXPECT_TRUE(settings->CreatePath(section) && settings->Write(L"Bar-1", std::wstring(line)));
    return Bar->LoadState(*settings, section, 1, 7);
  };
  Bar->ShowControlBar(true);
  EXPECT_FALSE(load(L"1;docked;1;220;150;420;260;middle;0;0;0;0;300;200"));
  EXPECT_EQ(Standing(Bar), "t");
  EXPECT_TRUE(load(L"1;floating;1;20000;20000;420;260;left;32767;32767;32767;0;1;1"));
  EXPECT_EQ(Bar->GetFloatRect(), wxRect(100, 100, 420, 260)) << "it was off every display";
  EXPECT_TRUE(load(L"1;docked;1;220;150;420;260;left;0;0;0;0;300;200"));
  EXPECT_EQ(Standing(Bar), "dl");
  EXPECT_NEAR(Bar->GetSize().x, 300, 2);
  Bar->EnableDocking(false);
  Bar->FloatControlBar(kFloatRect);
  EXPECT_TRUE(load(L"1;docked;1;220;150;420;260;left;0;0;0;0;300;200"));
  EXPECT_EQ(Standing(Bar), "f");
}

TEST_F(DockingTest, BarsGoAloneOrWithTheirFrame) {
  CQORPDockingManager& manager = Main->GetDockingManager();
  NotedBar* others[] = {MakeBar(L"a"), MakeBar(L"b"), MakeBar(L"c"), MakeBar(L"d")};
  others[0]->TabControlBar();
  others[1]->DockControlBar(DockSide::Left);
  for (NotedBar* bar : others) bar->ShowControlBar(true);
  Pump();
  manager.DestroyBar(others[0]);
  others[1]->Destroy();
  delete others[2];
  EXPECT_EQ(Living, 2);
  EXPECT_EQ(manager.Bars(), (std::vector<CQORPDockingControlBar*>{Bar, others[3]}));
  EXPECT_EQ(Tabs().GetPageCount(), 0U);
  Pump();
  Bar->TabControlBar();
  Bar->ShowControlBar(true);
  Main->Destroy();  // one tabbed, one floating
  Main = nullptr;
  Pump();
  EXPECT_EQ(Living, 0);
}

TEST_F(DockingTest, TheFrameOfAProcessGoesWithItsBars) {
  EXPECT_EQ(CQORPDockingManager::ForProcess(), &Main->GetDockingManager());
  Main->Destroy();
  Main = nullptr;
  Pump();
  CQORPDockingManager* own = CQORPDockingManager::ForProcess();
  ASSERT_NE(own, nullptr);
  EXPECT_EQ(CQORPDockingManager::ForProcess(), own);
  EXPECT_FALSE(own->Frame().IsShown());
  NotedBar* tabbed = MakeBar(L"Tabbed", *own);
  NotedBar* docked = MakeBar(L"Docked", *own);
  tabbed->TabControlBar();
  docked->DockControlBar(DockSide::Left);
  for (NotedBar* bar : {tabbed, docked}) bar->ShowControlBar(true);
  EXPECT_TRUE(own->Frame().IsShown());
  tabbed->TabGoes = 0;
  own->Frame().Close();
  EXPECT_TRUE(own->Frame().IsShown() && tabbed->IsBarShown());
  EXPECT_FALSE(docked->IsBarShown());
  tabbed->TabGoes = 1;
  own->Frame().Close();
  EXPECT_FALSE(own->Frame().IsShown() || tabbed->IsBarShown());
  EXPECT_EQ(tabbed->TabClosePresses, 2);
  EXPECT_EQ(tabbed->ClosePresses, 0);
  EXPECT_EQ(docked->ClosePresses, 1) << "a hidden bar is not asked again";
  EXPECT_EQ(docked->TabClosePresses, 0);
  tabbed->ShowControlBar(true);
  EXPECT_TRUE(own->Frame().IsShown());
  own->Frame().Destroy();
  Pump();
}

}  // namespace
