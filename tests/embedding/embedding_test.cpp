// The toolkit and its books in a program whose main loop is not that of wxWidgets.
#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "book_windows/windows/book_screen.h"
#include "book_windows/windows/trade_book_bar.h"
#include "tests/embedding/foreign_loop.h"
#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/dialogs/message_box.h"
#include "toolkit/start/toolkit_start.h"
#include "toolkit/system/make_child.h"

namespace {

class EditBar : public CQORPDockingControlBar {
 public:
  bool PreTranslateMessage(wxKeyEvent& event) override {
    ++KeyCount;
    return event.GetKeyCode() == WXK_F8;
  }
  wxTextCtrl* First = nullptr;
  wxTextCtrl* Second = nullptr;
  int KeyCount = 0, IdleCount = 0;
};

EditBar& OpenBar() {
  EditBar& bar = MakeChild<EditBar>();
  EXPECT_TRUE(bar.CreateBar(*CQORPDockingManager::ForProcess(), L"Book", wxRect(300, 200, 300, 200), 1));
  bar.First = &MakeChild<wxTextCtrl>(&bar, wxID_ANY, wxEmptyString, wxPoint(10, 10), wxSize(200, 40));
  bar.Second = &MakeChild<wxTextCtrl>(&bar, wxID_ANY, wxEmptyString, wxPoint(10, 60), wxSize(200, 40));
  bar.Bind(wxEVT_IDLE, [&bar](wxIdleEvent&) { ++bar.IdleCount; });
  bar.ShowControlBar(true);
  return bar;
}

// A modal box runs a loop within that of the program; a deferred call closes the box.
void ShowBox(EditBar& bar) {
  bool blocked = false;
  wxTheApp->CallAfter([&] {
    blocked = !ForeignWindowTakesInput().value_or(false);
    for (wxWindow* window : wxTopLevelWindows)
      if (auto* dialog = dynamic_cast<wxDialog*>(window); dialog != nullptr && dialog->IsModal()) dialog->Close();
  });
  CQORPMessageBox box({.Parent = &bar, .Caption = L"Book", .Text = L"Close?", .Style = 1});
  EXPECT_EQ(box.ShowModal(), 2);
  EXPECT_TRUE(blocked) << "the program's own window takes no input meanwhile";
  EXPECT_TRUE(ForeignWindowTakesInput().value_or(true));
}

TEST(Embedding, AForeignLoopServesABarEachTimeTheToolkitStarts) {
  if (!OpenForeignWindow()) GTEST_SKIP() << "there is no display to make windows on";
  for (int time = 0; time < 2; ++time) {
    ASSERT_TRUE(StartToolkit());
    EditBar& bar = OpenBar();
    EXPECT_TRUE(TickUntil([&] { return bar.IsShownOnScreen() && bar.IdleCount > 0; }));
    EXPECT_TRUE(TickUntil([&] {
      bar.First->SetFocus();
      return wxWindow::FindFocus() == bar.First &&
             dynamic_cast<wxTopLevelWindow&>(*wxGetTopLevelParent(&bar)).IsActive();
    }));
    wxUIActionSimulator keys;
    for (const int key : {int{'a'}, int{'b'}, int{WXK_F8}, int{WXK_TAB}}) EXPECT_TRUE(keys.Char(key));
    EXPECT_TRUE(TickUntil([&] { return bar.First->GetValue() == L"ab" && wxWindow::FindFocus() == bar.Second; }));
    EXPECT_GE(bar.KeyCount, 4);
    EXPECT_TRUE(TickUntil([&] { return ShowBox(bar), true; }));
    bar.TabControlBar();
    EXPECT_TRUE(TickUntil([&] { return bar.GetParentMDIChild()->IsShownOnScreen(); }));
    StopToolkit();
    EXPECT_EQ(wxTheApp, nullptr);
    Tick();
  }
}

// With the list of books the toolkit goes, whatever has become of the bars.
TEST(Embedding, TheEndOfTheBooksStopsTheToolkit) {
  if (!OpenForeignWindow()) GTEST_SKIP() << "there is no display to make windows on";
  for (const bool barsGoFirst : {false, true}) {
    CQORTradeImpl decoder;
    PluginState state(decoder);
    CQORDLLComman functions([](const char*) -> void* { return nullptr; });
    auto screen = std::make_unique<TradeBookScreen>(state, functions, BookCallbacks{});
    screen->Registry.OpenNewBook();
    ASSERT_TRUE(TickUntil([] { return ShowsWindow("Trade Book : All"); }));
    auto& bar = dynamic_cast<CTradeBookBar&>(*screen->Registry.BarsById.begin()->second->Window);
    if (barsGoFirst) bar.GetDockingManager()->DestroyBar(&bar);
    screen.reset();
    EXPECT_EQ(wxTheApp, nullptr);
    EXPECT_TRUE(TickUntil([] { return !ShowsWindow("Trade Book : All"); })) << "the program goes on";
  }
}

}  // namespace
