#include "terminal/program/window_memory.h"

#include <gtest/gtest.h>

#include "tests/terminal/test_files.h"

namespace {

TEST(WindowMemory, KeepsPlacesAndDay) {
  const WatchPlace watch{{{L"Last", 92}, {L"Name", 300}}, L"Last", false};
  {
    WindowMemory memory(TestFolder());
    EXPECT_FALSE(memory.LoadFrame());
    EXPECT_FALSE(memory.LoadWatch());
    memory.SaveFrame({{-20, 10, 1260, 810}, true});
    memory.SaveWatch(watch);
    memory.SaveDay(RunFiles::OfDay(TestFolder() / "day.csv"));
    EXPECT_TRUE(memory.Write());
  }
  WindowMemory again(TestFolder());
  EXPECT_EQ(again.LoadDay(), TestFolder() / "day.csv");
  again.SaveDay(RunFiles::OfDay({}));
  EXPECT_FALSE(again.LoadDay()) << "the sample";
  ASSERT_TRUE(again.LoadFrame());
  EXPECT_EQ(again.LoadFrame()->Rectangle.Left, -20);
  EXPECT_EQ(again.LoadFrame()->Rectangle.Bottom, 810);
  EXPECT_TRUE(again.LoadFrame()->Maximized);
  ASSERT_TRUE(again.LoadWatch());
  EXPECT_EQ(again.LoadWatch()->Columns, watch.Columns);
  EXPECT_EQ(again.LoadWatch()->SortColumn, L"Last");
  EXPECT_FALSE(again.LoadWatch()->Rising);
}

TEST(WindowMemory, IgnoresImpossiblePlaces) {
  for (const SettingsRectangle& rectangle :
       {SettingsRectangle{0, 0, 199, 800}, SettingsRectangle{0, 0, 800, 199}, SettingsRectangle{0, 0, 40000, 800},
        SettingsRectangle{-40000, 0, 800, 800}, SettingsRectangle{800, 800, 0, 0}}) {
    WindowMemory memory(TestFolder());
    memory.SaveFrame({rectangle, false});
    EXPECT_FALSE(memory.LoadFrame());
  }
  for (const ColumnPlace& column : {ColumnPlace{L"Last", 9}, ColumnPlace{L"Last", 4001}, ColumnPlace{L"", 90}}) {
    WindowMemory memory(TestFolder());
    memory.SaveWatch({{{L"Name", 100}, column}, std::nullopt, true});
    EXPECT_FALSE(memory.LoadWatch());
  }
  WriteTestFile("TerminalWindows.xml", "<CURRENT_USER>\n<Frame>\n<Rectangle>\"00");
  EXPECT_FALSE(WindowMemory(TestFolder()).LoadFrame());
}

}  // namespace
