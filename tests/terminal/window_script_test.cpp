#include "terminal/script/window_script.h"

#include <gtest/gtest.h>

#include <vector>

#include "terminal/common/errors.h"
#include "tests/terminal/test_files.h"

namespace {

TEST(KeyPress, ReadsAndShowsNames) {
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
  using enum ScriptAction;
  using Ms = std::chrono::milliseconds;
  // Each is the one command of a file, behind a remark and an empty line.
  const struct {
    const char* Line;
    ScriptCommand Command;
  } cases[] = {
      {"open-book # now", {.Action = OpenBook}},
      {"  select GC 2013\t", {.Action = Select, .Text = "GC 2013"}},
      {"focus book", {.Action = Focus, .Focus = ScriptFocus::Book}},
      {"focus book GC 2013", {.Action = Focus, .Text = "GC 2013", .Focus = ScriptFocus::Book}},
      {"focus market-watch", {.Action = Focus, .Focus = ScriptFocus::MarketWatch}},
      {"key Ctrl+c", {.Action = Key, .Key = {'C', true}}},
      {"wait played", {.Action = WaitPlayed}},
      {"wait 3600000", {.Action = WaitTime, .Time = Ms(3600000)}},
      {"screenshot a b.png", {.Action = Screenshot, .Text = "a b.png"}},
      {"menu Day > As Fast As Possible", {.Action = Menu, .Menu = {"Day", "As Fast As Possible"}}},
      {"usage day 1\r", {.Action = Usage, .Text = "day 1"}},
      {"close-book", {.Action = CloseBook}},
      {"filter Side  not buy # now", {.Action = Filter, .Text = "not buy", .Column = "Side"}},
      {"filter Side", {.Action = Filter, .Column = "Side"}},
      {"header Price", {.Action = Header, .Column = "Price"}},
      {"header Price ctrl", {.Action = Header, .Column = "Price", .Ctrl = true}},
      {"rows 2 2", {.Action = Rows, .FirstRow = 2, .LastRow = 2}},
      {"book-menu Copy", {.Action = BookMenu, .Menu = {"Copy"}}},
      {"place tab", {.Action = Place, .Place = ScriptPlace::Tab}},
      {"expect-rows 0", {.Action = ExpectRows}},
      {"expect-rows 12", {.Action = ExpectRows, .Count = 12}},
      {"answer OK", {.Action = Answer, .Text = "OK"}},
      {"exit", {.Action = Exit}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Line);
    const auto read = ReadWindowScript(WriteTestFile("good.txt", std::string("# a remark\r\n\r\n") + row.Line));
    ASSERT_EQ(read.size(), 1U);
    ScriptCommand expected = row.Command;
    expected.Line = 3;
    EXPECT_TRUE(read[0] == expected);
  }
}

TEST(WindowScript, RejectsALineWithItsNumber) {
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

}  // namespace
