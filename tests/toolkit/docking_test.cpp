#include <wx/aui/auibook.h>
#include <wx/aui/framemanager.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <functional>

#include "grid_base/settings/registry_store.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/bars/frame.h"
#include "toolkit/model/bar_place.h"

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
    ++ClosePresses;
    return TabGoes;
  }
  bool PreTranslateMessage(wxKeyEvent& event) override {
    Keys.push_back(event.GetKeyCode());
    return event.GetKeyCode() == WXK_ESCAPE;
  }
  void OnBarFocus() override { ++FocusCount; }
  void OnBarMoved() override { ++MoveCount; }

  int& Living;
  int ClosePresses = 0, TabGoes = 1, FocusCount = 0, MoveCount = 0;
  std::vector<int> Keys;
  wxTextCtrl* Edit = nullptr;
};

class DockingTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    if (IsSkipped()) return;
    Main = new CQORPFrame(nullptr, wxID_ANY, L"Terminal", wxRect(60, 40, 1000, 640));
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
  NotedBar* MakeBar(const std::wstring& caption) {
    auto* bar = new NotedBar(Living);
    EXPECT_TRUE(bar->CreateBar(Main->GetDockingManager(), caption, kFloatRect, 30029));
    bar->Edit = new wxTextCtrl(bar, wxID_ANY, wxEmptyString, wxPoint(5, 5));
    return bar;
  }
  wxAuiNotebook& Tabs() {
    for (wxWindow* child : Main->GetChildren())
      if (auto* tabs = dynamic_cast<wxAuiNotebook*>(child)) return *tabs;
    ADD_FAILURE() << "no tabs";
    std::abort();
  }
  wxAuiPaneInfo& Pane(NotedBar* bar) { return wxAuiManager::GetManager(Main)->GetPane(bar); }
  // What the frame shows of the bar: f, d with the side, t, or - for nothing.
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

TEST_F(DockingTest, ABarGoesFromPlaceToPlaceAndComesBackWhereItWas) {
  EXPECT_EQ(Standing(Bar), "-");
  struct Row {
    const char* Name;
    std::function<void()> Move;
    const char* Expected;
  };
  const Row rows[] = {
      {"a new bar floats", [this] { Bar->ShowControlBar(true); }, "f"},
      {"left", [this] { Bar->DockControlBar(DockSide::Left); }, "dl"},
      {"hidden", [this] { Bar->ShowControlBar(false); }, "-"},
      {"back at the left", [this] { Bar->ShowControlBar(true, false); }, "dl"},
      {"right", [this] { Bar->DockControlBar(DockSide::Right); }, "dr"},
      {"top", [this] { Bar->DockControlBar(DockSide::Top); }, "dt"},
      {"bottom", [this] { Bar->DockControlBar(DockSide::Bottom); }, "db"},
      {"from a side to a tab", [this] { Bar->TabControlBar(); }, "t"},
      {"tabbed once more", [this] { Bar->TabControlBar(); }, "t"},
      {"hidden tab", [this] { Bar->ShowControlBar(false); }, "-"},
      {"back as a tab", [this] { Bar->ShowControlBar(true); }, "t"},
      {"from a tab to a side", [this] { Bar->DockControlBar(DockSide::Left); }, "dl"},
      {"from a side", [this] { Bar->FloatControlBar(Bar->GetFloatRect()); }, "f"},
      {"floating to tab", [this] { Bar->TabControlBar(); }, "t"},
      {"tab to floating", [this] { Bar->FloatControlBar(Bar->GetFloatRect()); }, "f"},
      {"hidden floating", [this] { Bar->ShowControlBar(false); }, "-"},
      {"docked while hidden", [this] { Bar->DockControlBar(DockSide::Top); }, "-"},
      {"then shown", [this] { Bar->ShowControlBar(true); }, "dt"},
      {"tabbed while hidden",
       [this] {
         Bar->ShowControlBar(false);
         Bar->TabControlBar();
       },
       "-"},
      {"then shown too", [this] { Bar->ShowControlBar(true); }, "t"},
      {"floats again", [this] { Bar->FloatControlBar(Bar->GetFloatRect()); }, "f"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Name);
    Bar->MoveCount = 0;
    row.Move();
    Pump();
    EXPECT_EQ(Standing(Bar), row.Expected);
    EXPECT_EQ(Bar->GetFloatRect(), kFloatRect);
    EXPECT_EQ(Main->GetDockingManager().BarOf(Bar->Edit), Bar);
    EXPECT_TRUE(Tabs().GetPageCount() == (Bar->IsMDITabbed() ? 1U : 0U));
  }
  EXPECT_GT(Bar->MoveCount, 0);
  EXPECT_TRUE(PumpUntil([this] { return Bar->GetParentMiniFrame()->GetScreenRect() == kFloatRect; }));
  Bar->GetParentMiniFrame()->SetSize(140, 90);  // no smallest size is left over from docking
  EXPECT_EQ(Bar->GetFloatRect().GetSize(), wxSize(140, 90));
}

TEST_F(DockingTest, TheTitleStandsWhereTheBarStands) {
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
  EXPECT_EQ(Bar->ClosePresses, 4);
}

TEST_F(DockingTest, KeysGoToTheBarWithTheFocusFirst) {
  NotedBar* other = MakeBar(L"Other");
  other->DockControlBar(DockSide::Bottom);
  other->ShowControlBar(true, false);
  int atFrame = 0;
  Main->Bind(wxEVT_CHAR_HOOK, [&atFrame](wxKeyEvent& event) { ++atFrame, event.Skip(); });
  const std::function<void()> moves[] = {[this] { Bar->DockControlBar(DockSide::Left); },
                                         [this] { Bar->FloatControlBar(kFloatRect); },
                                         [this] { Bar->TabControlBar(); }};
  for (const auto& move : moves) {
    move();
    Bar->ShowControlBar(true);
    SCOPED_TRACE(Standing(Bar));
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

TEST_F(DockingTest, StateIsKeptUnderTheSectionAndHostileTextIsRefused) {
  const auto settings = RegistryStore::Make(SettingsFile)->Open(0, 0);
  const std::wstring section = L"Trade Book : AllTradeBook 1";
  EXPECT_FALSE(Bar->LoadState(*settings, section, 1, 7));
  struct Row {
    std::function<void()> Move;
    const char* Standing;
    const wchar_t* Start;
  };
  const Row rows[] = {
      {[this] { Bar->ShowControlBar(true); }, "f", L"1;floating;1;220;150;420;260;left;0;0;0;"},
      {[this] { Bar->DockControlBar(DockSide::Bottom); }, "db", L"1;docked;1;220;150;420;260;bottom;0;0;0;"},
      {[this] { Bar->TabControlBar(); }, "t", L"1;tabbed;1;220;150;420;260;bottom;0;0;0;"},
      {[this] { Bar->ShowControlBar(false); }, "-", L"1;tabbed;0;220;150;420;260;bottom;0;0;0;"},
  };
  NotedBar* other = MakeBar(L"Other");
  std::wstring text;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Standing);
    row.Move();
    Pump();
    EXPECT_TRUE(Bar->SaveState(*settings, section, 1, 7));
    ASSERT_TRUE(settings->OpenPath(section) && settings->Read(L"Bar-1", text));
    EXPECT_EQ(text.substr(0, std::wstring(row.Start).size()), row.Start);
    other->FloatControlBar(wxRect(400, 300, 200, 100));
    ASSERT_TRUE(other->LoadState(*settings, section, 1, 7));
    Pump();
    EXPECT_EQ(Standing(other), row.Standing);
    EXPECT_EQ(other->GetFloatRect(), kFloatRect);
    EXPECT_FALSE(other->LoadState(*settings, section, 2, 7));
  }
  const wchar_t* good = L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300;200";
  ASSERT_TRUE(ParseBarPlace(good) && BarPlaceText(*ParseBarPlace(good)) == good);
  const wchar_t* hostile[] = {L"",
                              L"1",
                              L"2;docked;1;220;150;420;260;bottom;0;0;0;0;300;200",
                              L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300",
                              L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300;200;",
                              L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300;200;1",
                              L"1;Docked;1;220;150;420;260;bottom;0;0;0;0;300;200",
                              L"1;docked;2;220;150;420;260;bottom;0;0;0;0;300;200",
                              L"1;docked;1;220;150;0;260;bottom;0;0;0;0;300;200",
                              L"1;docked;1;220;150;-4;260;bottom;0;0;0;0;300;200",
                              L"1;docked;1;40000;150;420;260;bottom;0;0;0;0;300;200",
                              L"1;docked;1;220;-32768;420;260;bottom;0;0;0;0;300;200",
                              L"1;docked;1;220;150;420;260;middle;0;0;0;0;300;200",
                              L"1;docked;1;220;150;420;260;bottom;-1;0;0;0;300;200",
                              L"1;docked;1;220;150;420;260;bottom;0;0;0;99999999999999999999;300;200",
                              L"1;docked;1;;150;420;260;bottom;0;0;0;0;300;200",
                              L"1;docked;1; 220;150;420;260;bottom;0;0;0;0;300;200",
                              L"1;docked;1;-;150;420;260;bottom;0;0;0;0;300;200",
                              L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300;0x9"};
  for (const wchar_t* line : hostile) {
    SCOPED_TRACE(line);
    ASSERT_TRUE(settings->CreatePath(section) && settings->Write(L"Bar-1", std::wstring(line)));
    Bar->FloatControlBar(kFloatRect);
    Bar->ShowControlBar(true);
    EXPECT_FALSE(Bar->LoadState(*settings, section, 1, 7));
    EXPECT_EQ(Standing(Bar), "f");
  }
  // Off every display: it comes to where it can be seen.
  ASSERT_TRUE(
      settings->CreatePath(section) &&
      settings->Write(L"Bar-1", std::wstring(L"1;floating;1;20000;20000;420;260;left;32767;32767;32767;0;1;1")));
  EXPECT_TRUE(Bar->LoadState(*settings, section, 1, 7));
  EXPECT_EQ(Bar->GetFloatRect(), wxRect(100, 100, 420, 260));
  Bar->DockControlBar(DockSide::Left);
  EXPECT_EQ(Standing(Bar), "dl");
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

TEST_F(DockingTest, TheProcessHasOneManager) {
  EXPECT_EQ(CQORPDockingManager::ForProcess(), &Main->GetDockingManager());
  Main->Destroy();
  Main = nullptr;
  Pump();
  CQORPDockingManager* own = CQORPDockingManager::ForProcess();
  ASSERT_NE(own, nullptr);
  EXPECT_EQ(CQORPDockingManager::ForProcess(), own);
  EXPECT_FALSE(own->Frame().IsShown());
  auto* bar = new NotedBar(Living);
  ASSERT_TRUE(bar->CreateBar(*own, L"Book", kFloatRect, 1));
  bar->TabControlBar();
  bar->ShowControlBar(true);
  EXPECT_TRUE(own->Frame().IsShown());
  bar->TabGoes = 0;
  own->Frame().Close();
  EXPECT_TRUE(own->Frame().IsShown());  // the bar did not go
  bar->TabGoes = 1;
  own->Frame().Close();
  EXPECT_FALSE(own->Frame().IsShown());
  EXPECT_FALSE(bar->IsBarShown());
  EXPECT_EQ(bar->ClosePresses, 2);
  bar->ShowControlBar(true);
  EXPECT_TRUE(own->Frame().IsShown());
  own->Frame().Destroy();
  Pump();
}

}  // namespace
