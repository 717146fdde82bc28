// Books come back to their places on the screen.
#include <wx/display.h>

#include <functional>

#include "grid_base/settings/registry_store.h"
#include "tests/book_windows/books_fixture.h"
#include "tests/support/files.h"

namespace {

class BookPlacesTest : public BooksTest {
 protected:
  std::filesystem::path File() const { return Desk->Folder / "stored.xml"; }
  void Restore() {
    Registry().RestoreBookLayout(*RegistryStore::Make(File())->Open(0, 1));
    Pump();
  }
};

TEST_F(BookPlacesTest, BooksComeBackToTheirPlaces) {
  const std::function<void(CTradeBookBar&)> kChanges[] = {[](auto& bar) { bar.DockControlBar(DockSide::Left); },
                                                          [](auto& bar) { bar.DockControlBar(DockSide::Left); },
                                                          [](auto& bar) { bar.TabControlBar(); },
                                                          [](auto& bar) {
                                                            bar.FloatControlBar({320, 210, 444, 222});
                                                          },
                                                          [](auto& bar) { bar.DockControlBar(DockSide::Top); }};
  for (std::size_t i = 0; i < std::size(kChanges); ++i) {
    i % 2 == 0 ? BookDesk::Select("COMEX", "GC1") : BookDesk::SelectNothing();
    Registry().OpenNewBook();
    Pump();
  }
  for (std::size_t i = std::size(kChanges); i-- > 0;) {  // those at one side stand in the order of their docking
    kChanges[i](BarOf(static_cast<std::uint32_t>(i + 1)));
    Pump();
  }
  const auto place = [](CTradeBookBar& bar) { return bar.Floats() ? bar.GetFloatRect() : bar.GetScreenRect(); };
  std::map<std::uint32_t, wxRect> places;
  for (const auto& [id, book] : Registry().BarsById) places[id] = place(WindowOf(*book));
  Registry().SaveBookLayout(*RegistryStore::Make(File())->Open(0, 0));
  EXPECT_NE(
      ReadFile(File()).find("<TradeBook:COMEXGOLD201312TradeBook11>\r\n<Bar-1>\"1;docked;1;100;100;530;300;left;"),
      std::string::npos);
  Stop();
  Start();
  BookDesk::Select("COMEX", "GC1");
  Restore();
  ASSERT_EQ(Registry().BarsById.size(), std::size(kChanges));
  for (const auto& [id, rect] : places) {
    SCOPED_TRACE(id);
    EXPECT_TRUE(PumpUntil([&] { return place(BarOf(id)) == rect; }));
    EXPECT_EQ(BarOf(id).Dialog->GetStatic(30043)->IsShown(), id % 2 == 1) << "averages of one security";
  }
  const BookPlace docked = BarOf(1).Place(), tabbed = BarOf(3).Place(), floating = BarOf(4).Place();
  EXPECT_TRUE(docked.Docked && !docked.Tabbed && tabbed.Tabbed && !tabbed.Docked && !floating.Docked);
  const wxRect rect = BarOf(1).GetScreenRect();
  EXPECT_EQ(docked.Rect, (SettingsRectangle{rect.x, rect.y, rect.x + rect.width, rect.y + rect.height}));
}

// Whatever is stored, the book is on the screen; dock and tab of the entry are not read.
TEST_F(BookPlacesTest, FloatsOnTheScreenWithoutAStoredPlace) {
  for (const char* rect :
       {"000000800000008000ffff7fffffff7f", "ffffff7fffffff7f0000008000000080", "409c0000409c000080a9000080a90000",
        "0a000000feffffff", "36010000d2000000f2020000b0010000"}) {
    SCOPED_TRACE(rect);
    Stop();
    Start();
    WriteFile(File(),
              std::string("<CURRENT_USER><PLUGINDLLS><TradeBook><RecentFiles><1>\"TradeBook 1\"</1><Dock1>\"1\"</Dock1>"
                          "<Rect1>\"") +
                  rect + "\"</Rect1></RecentFiles></TradeBook></PLUGINDLLS></CURRENT_USER>");
    Restore();
    const CTradeBookBar& bar = BarOf(1);
    EXPECT_TRUE(bar.IsFloating());
    EXPECT_TRUE(wxDisplay(0U).GetGeometry().Contains(bar.GetFloatRect().GetPosition() + wxPoint(40, 12)));
    EXPECT_TRUE(wxRect(wxSize(4000, 4000)).Contains(wxRect(bar.GetFloatRect().GetSize())));
  }
  EXPECT_TRUE(PumpUntil([this] { return BarOf(1).GetFloatRect() == wxRect(310, 210, 444, 222); }));
}

}  // namespace
