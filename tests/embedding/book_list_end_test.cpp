// The list of books in a program without wxWidgets: with the list the toolkit goes, whatever has become of the bars.
#include <gtest/gtest.h>
#include <wx/app.h>

#include "book_windows/windows/book_screen.h"
#include "book_windows/windows/trade_book_bar.h"
#include "tests/embedding/foreign_loop.h"
#include "toolkit/bars/docking_manager.h"

namespace {

TEST(BookListEnd, StopsTheToolkit) {
  if (!OpenForeignWindow()) GTEST_SKIP() << "there is no display to make windows on";
  for (const bool barsGoFirst : {false, true}) {
    SCOPED_TRACE(barsGoFirst);
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
