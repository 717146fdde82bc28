// What the windows keep and are driven by: the script of commands, the memory of places, pictures.
#include <gtest/gtest.h>

#include <vector>

#include "terminal/common/errors.h"
#include "terminal/common/png_file.h"
#include "terminal/program/window_memory.h"
#include "terminal/script/key_press.h"
#include "terminal/script/window_script.h"
#include "tests/terminal/test_files.h"

namespace {

TEST(KeyPress, TellsKeysByTheirNames) {
  const struct {
    const char* Text;
    KeyPress Key;
    const char* Shown;
  } good[] = {{"F8", {0x77}, "F8"},
              {"f12", {0x7B}, "F12"},
              {"Ctrl+C", {'C', true}, "Ctrl+C"},
              {"alt+shift+ctrl+end", {0x23, true, true, true}, "Ctrl+Shift+Alt+End"},
              {"7", {'7'}, "7"},
              {"ESCAPE", {0x1B}, "Escape"}};
  for (const auto& row : good) {
    EXPECT_EQ(ParseKeyPress(row.Text), row.Key) << row.Text;
    EXPECT_EQ(KeyPressText(row.Key), row.Shown);
  }
  for (const char* text : {"", "+", "F0", "F13", "Ctrl", "Ctrl+", "Ctrl+Ctrl+C", "F8 ", "C+Ctrl", "Strg+C", "-"})
    EXPECT_FALSE(ParseKeyPress(text)) << text;
  EXPECT_EQ(KeyPressText({.Code = 0, .Ctrl = true}), "");
}

TEST(WindowScript, ReadsItsCommands) {
  const auto file = WriteTestFile(
      "good.txt",
      "# a remark\r\n\r\nopen-book # now\n  select GC 2013\t\nfocus book\nkey Ctrl+c\n"
      "wait played\nwait 250\nscreenshot a b.png\nmenu Day > As Fast As Possible\nusage day 1\nclose-book\nexit");
  const std::vector<ScriptCommand> read = ReadWindowScript(file);
  using Action = ScriptAction;
  const struct {
    std::uint64_t Line;
    Action Does;
    const char* Text;
  } expected[] = {{3, Action::OpenBook, ""},
                  {4, Action::Select, "GC 2013"},
                  {5, Action::Focus, ""},
                  {6, Action::Key, ""},
                  {7, Action::WaitPlayed, ""},
                  {8, Action::WaitTime, ""},
                  {9, Action::Screenshot, "a b.png"},
                  {10, Action::Menu, ""},
                  {11, Action::Usage, "day 1"},
                  {12, Action::CloseBook, ""},
                  {13, Action::Exit, ""}};
  ASSERT_EQ(read.size(), std::size(expected));
  for (std::size_t i = 0; i < read.size(); ++i) {
    EXPECT_EQ(read[i].Line, expected[i].Line);
    EXPECT_EQ(read[i].Action, expected[i].Does);
    EXPECT_EQ(read[i].Text, expected[i].Text);
  }
  EXPECT_EQ(read[2].Focus, ScriptFocus::Book);
  EXPECT_EQ(read[3].Key, (KeyPress{'C', true}));
  EXPECT_EQ(read[5].Time, std::chrono::milliseconds(250));
  EXPECT_EQ(read[7].Menu, (std::vector<std::string>{"Day", "As Fast As Possible"}));
}

TEST(WindowScript, ReadsWhatIsDoneInABook) {
  const auto file = WriteTestFile("book.txt",
                                  "filter Side  not buy # now\nfilter Side\nheader Price\nheader Price ctrl\nrows 2 2\n"
                                  "book-menu Copy\nfocus book GC 2013\nplace tab\nexpect-rows 0\n");
  const std::vector<ScriptCommand> read = ReadWindowScript(file);
  const struct {
    const char* Column;
    const char* Text;
    bool Ctrl;
    int FirstRow, LastRow;
    std::size_t Levels;
    ScriptPlace Place = ScriptPlace::Floating;
  } expected[] = {{"Side", "not buy", false, 0, 0, 0},
                  {"Side", "", false, 0, 0, 0},
                  {"Price", "", false, 0, 0, 0},
                  {"Price", "", true, 0, 0, 0},
                  {"", "", false, 2, 2, 0},
                  {"", "", false, 0, 0, 1},
                  {"", "GC 2013", false, 0, 0, 0},
                  {"", "", false, 0, 0, 0, ScriptPlace::Tab}};
  ASSERT_EQ(read.size(), std::size(expected) + 1);
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    SCOPED_TRACE(i + 1);
    EXPECT_EQ(read[i].Column, expected[i].Column);
    EXPECT_EQ(read[i].Text, expected[i].Text);
    EXPECT_EQ(read[i].Ctrl, expected[i].Ctrl);
    EXPECT_EQ(read[i].FirstRow, expected[i].FirstRow);
    EXPECT_EQ(read[i].LastRow, expected[i].LastRow);
    EXPECT_EQ(read[i].Menu.size(), expected[i].Levels);
    EXPECT_EQ(read[i].Place, expected[i].Place);
  }
}

TEST(WindowScript, RefusesALineWithItsNumber) {
  const struct {
    const char* Line;
    const char* Reason;
  } cases[] = {
      {"open", "there is no command \"open\""},      {"Exit", "there is no command \"Exit\""},
      {"exit now", "exit needs nothing behind it"},  {"select", "select needs a text behind it"},
      {"focus books", "focus needs market-watch,"},  {"key F13", "key needs a key such as"},
      {"wait -1", "wait needs played, or"},          {"wait 1s", "wait needs played, or"},
      {"wait 3600001", "wait needs played, or"},     {"menu Day", "menu needs a menu and its entry"},
      {"menu Day>>Pause", "menu needs a menu and "}, {"menu Day>", "menu needs a menu and its entry"},
      {"filter", "filter needs a column's title"},   {"header Price Ctrl", "header needs a column's title"},
      {"header", "header needs a column's title"},   {"rows 0 1", "rows needs the first row and the last"},
      {"rows 3 2", "rows needs the first row and"},  {"rows 1", "rows needs the first row and the last"},
      {"rows 1 2 3", "rows needs the first row"},    {"rows 1 2147483648", "rows needs the first row"},
      {"book-menu", "book-menu needs an entry of"},  {"place middle", "place needs left, right, top, b"},
      {"focus none GC", "focus needs market-watch"}, {"cancel-save x", "cancel-save needs nothing behin"},
      {"save-as", "save-as needs a text behind it"}, {"expect-rows -1", "expect-rows needs a number of r"},
      {"usage", "usage needs a text behind it"},     {"close-book All", "close-book needs nothing behin"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Line);
    const auto file = WriteTestFile("bad.txt", std::string("exit\n\n") + row.Line + "\nexit\n");
    try {
      ReadWindowScript(file);
      ADD_FAILURE() << "was taken";
    } catch (const TerminalError& error) {
      EXPECT_EQ(error.Code, ExitCode::File);
      EXPECT_NE(std::string(error.what()).find(std::string("bad.txt:3: ") + row.Reason), std::string::npos)
          << error.what();
    }
  }
}

TEST(WindowMemory, BringsBackWhatItKept) {
  const WatchPlace watch{{{L"Last", 92}, {L"Name", 300}}, L"Last", false};
  {
    WindowMemory memory(TestFolder());
    EXPECT_FALSE(memory.LoadFrame());
    EXPECT_FALSE(memory.LoadWatch());
    memory.SaveFrame({{-20, 10, 1260, 810}, true});
    memory.SaveWatch(watch);
    EXPECT_TRUE(memory.Write());
  }
  WindowMemory again(TestFolder());
  ASSERT_TRUE(again.LoadFrame());
  EXPECT_EQ(again.LoadFrame()->Rectangle.Left, -20);
  EXPECT_EQ(again.LoadFrame()->Rectangle.Bottom, 810);
  EXPECT_TRUE(again.LoadFrame()->Maximized);
  ASSERT_TRUE(again.LoadWatch());
  EXPECT_EQ(again.LoadWatch()->Columns, watch.Columns);
  EXPECT_EQ(again.LoadWatch()->SortColumn, L"Last");
  EXPECT_FALSE(again.LoadWatch()->Rising);
}

TEST(WindowMemory, TakesNothingThatMakesNoSense) {
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

TEST(PngFile, WritesTheBytesOfTheFormat) {
  // Two pixels side by side over two: red, green; red, blue.
  const std::uint8_t pixels[] = {255, 0, 0, 0, 255, 0, 255, 0, 0, 0, 0, 255};
  const std::string png = PngBytes(2, 2, pixels);
  const std::string head("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\0\2\0\0\0\2\x08\2\0\0\0\xFD\xD4\x9A\x73", 33);
  EXPECT_EQ(png.substr(0, 33), head);
  EXPECT_EQ(png.substr(37, 4), "IDAT");
  EXPECT_EQ(png.substr(png.size() - 12), std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12));
  EXPECT_EQ(PngBytes(2, 3, pixels), "");
  EXPECT_EQ(PngBytes(0, 2, {}), "");
  EXPECT_THROW(WritePngFile(TestFolder() / "no" / "x.png", 2, 2, pixels), TerminalError);
  WritePngFile(TestFolder() / "x.png", 2, 2, pixels);
  EXPECT_EQ(ReadTestFile(TestFolder() / "x.png"), png);
}

}  // namespace
