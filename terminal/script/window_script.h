// WindowScript: a text file of commands that drive the terminal's windows as a user would, one command a line.
//
//   line    := [command] ["#" anything]          blanks around do not count
//   command := "open-book" | "select" security-id | "key" key
//            | "focus" ("market-watch" | "positions" | "chart" | "book" [title] | "none")
//            | "wait" ("played" | "live" | milliseconds) | "screenshot" file | "menu" text (">" text)+ | "exit"
//            | "close-book" | "usage" name | "filter" column [text] | "find" text | "header" column ["ctrl"] | "rows"
//            from to | "book-menu" text (">" text)* | "place" ("left" | "right" | "top" | "bottom" | "tab" |
//            "floating") | "save-as" file | "cancel-save" | "answer" text | "choose" text | "check" text |
//            "expect-rows" count | "expect-text" text
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A key with its held keys, by name and by virtual-key code, in which plug-ins name the key of their menu entry.
struct KeyPress {
  std::uint8_t Code = 0;  // 0: no key
  bool Ctrl = false;
  bool Shift = false;
  bool Alt = false;
  bool operator==(const KeyPress&) const = default;
};

// "F8", "Ctrl+Shift+End", "a": names in any case, held keys first; nothing for other texts.
std::optional<KeyPress> ParseKeyPress(std::string_view text);
// As menus show it; empty for a code without a name.
std::string KeyPressText(const KeyPress& key);

enum class ScriptAction : std::uint8_t {
  OpenBook,
  CloseBook,
  Select,
  Focus,
  Key,
  WaitPlayed,
  WaitLive,
  WaitTime,
  Screenshot,
  Usage,
  Menu,
  Filter,
  Find,
  Header,
  Rows,
  BookMenu,
  Place,
  SaveAs,
  CancelSave,
  Answer,
  Choose,
  Check,
  ExpectRows,
  ExpectText,
  Exit
};
enum class ScriptFocus : std::uint8_t { MarketWatch, Positions, Chart, Book, None };
enum class ScriptPlace : std::uint8_t { Left, Right, Top, Bottom, Tab, Floating };

struct ScriptCommand {
  std::uint64_t Line = 0;
  ScriptAction Action = ScriptAction::Exit;
  std::string Text{};               // whatever the command is about: a security, a title, a file, a label
  std::string Column{};             // its title
  std::vector<std::string> Menu{};  // from the outermost menu down
  KeyPress Key{};
  bool Ctrl = false;
  ScriptPlace Place = ScriptPlace::Floating;
  int FirstRow = 0;  // rows count from 1
  int LastRow = 0;
  int Count = 0;
  ScriptFocus Focus = ScriptFocus::None;
  std::chrono::milliseconds Time{};
  bool operator==(const ScriptCommand&) const = default;
};

// Throws TerminalError "FILE:LINE: reason" with ExitCode::File for the first bad line or if the file cannot be read.
std::vector<ScriptCommand> ReadWindowScript(const std::filesystem::path& file);

// The lines of --help about the commands.
std::string ScriptHelpText();
