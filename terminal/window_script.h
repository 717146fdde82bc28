// WindowScript: a text file of commands that drive the terminal's windows as a user would, one command a line. Not
// their doing: windows/script_runner.h. Pure; any thread.
//
//   line    := [command] ["#" anything]          blanks around do not count
//   command := "open-book" | "select" security-id | "focus" ("market-watch" | "book" | "none") | "key" key
//            | "wait" ("played" | milliseconds) | "screenshot" file | "menu" text (">" text)* | "exit"
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "terminal/key_press.h"

enum class ScriptAction : std::uint8_t { OpenBook, Select, Focus, Key, WaitPlayed, WaitTime, Screenshot, Menu, Exit };
enum class ScriptFocus : std::uint8_t { MarketWatch, Book, None };

struct ScriptCommand {
  std::uint64_t Line = 0;
  ScriptAction Action = ScriptAction::Exit;
  std::string Text;               // of Select: the security; of Screenshot: the file
  std::vector<std::string> Menu;  // from the menu bar down
  KeyPress Key;
  ScriptFocus Focus = ScriptFocus::None;
  std::chrono::milliseconds Time{};
};

// Throws TerminalError "FILE:LINE: reason" with ExitCode::File for the first line that is no command, and when the file
// cannot be read.
std::vector<ScriptCommand> ReadWindowScript(const std::filesystem::path& file);

// The lines of --help about the commands.
std::string ScriptHelpText();
