#include "terminal/window_script.h"

#include <charconv>

#include "terminal/file_bytes.h"
#include "terminal/terminal_error.h"

namespace {

constexpr int kLongestWaitMs = 3600 * 1000;

// What the rest of the line would have to be; null when it was taken.
using Fault = const char*;

Fault TakeNothing(const std::string& rest, ScriptCommand& /*command*/) {
  return rest.empty() ? nullptr : "nothing behind it";
}

Fault TakeText(const std::string& rest, ScriptCommand& command) {
  command.Text = rest;
  return rest.empty() ? "a text behind it" : nullptr;
}

Fault TakeFocus(const std::string& rest, ScriptCommand& command) {
  constexpr std::pair<const char*, ScriptFocus> kPlaces[] = {
      {"market-watch", ScriptFocus::MarketWatch}, {"book", ScriptFocus::Book}, {"none", ScriptFocus::None}};
  for (const auto& [name, place] : kPlaces) {
    if (rest != name) continue;
    command.Focus = place;
    return nullptr;
  }
  return "market-watch, book or none";
}

Fault TakeKey(const std::string& rest, ScriptCommand& command) {
  const auto key = ParseKeyPress(rest);
  if (key) command.Key = *key;
  return key ? nullptr : "a key such as F8, Escape or Ctrl+C";
}

Fault TakeWait(const std::string& rest, ScriptCommand& command) {
  if (rest == "played") return nullptr;
  int value = 0;
  const char* end = rest.data() + rest.size();
  const auto [stop, error] = std::from_chars(rest.data(), end, value);
  if (error != std::errc() || stop != end || value < 0 || value > kLongestWaitMs || rest.starts_with('-'))
    return "played, or milliseconds up to an hour";
  command.Action = ScriptAction::WaitTime;
  command.Time = std::chrono::milliseconds(value);
  return nullptr;
}

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\r");
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

Fault TakeMenu(const std::string& rest, ScriptCommand& command) {
  std::string level;
  for (const char c : rest + '>') {
    if (c != '>') {
      level += c;
      continue;
    }
    command.Menu.push_back(Trimmed(level));
    if (command.Menu.back().empty()) return "a menu and its entry, such as Day>Pause";
    level.clear();
  }
  return command.Menu.size() < 2 ? "a menu and its entry, such as Day>Pause" : nullptr;
}

struct CommandRow {
  const char* Name;
  ScriptAction Action;
  Fault (*Take)(const std::string& rest, ScriptCommand& command);
  const char* Value;
  const char* Help;
};
constexpr CommandRow kCommands[] = {
    {"open-book", ScriptAction::OpenBook, TakeNothing, "", "runs the plug-in's menu entry"},
    {"select", ScriptAction::Select, TakeText, "SECURITY_ID", "makes its row of the market watch the current one"},
    {"focus", ScriptAction::Focus, TakeFocus, "market-watch|book|none", "gives the keys to that window"},
    {"key", ScriptAction::Key, TakeKey, "KEY", "presses a key: F8, Escape, Ctrl+C, Shift+PageDown"},
    {"wait", ScriptAction::WaitPlayed, TakeWait, "played|MS", "waits for the end of the day, or so many milliseconds"},
    {"screenshot", ScriptAction::Screenshot, TakeText, "FILE", "writes a picture of the windows"},
    {"menu", ScriptAction::Menu, TakeMenu, "TEXT>TEXT", "runs an entry of the menu bar"},
    {"exit", ScriptAction::Exit, TakeNothing, "", "closes the terminal"},
};

ScriptCommand ParseLine(const std::filesystem::path& file, std::uint64_t number, const std::string& line) {
  const std::string place = PathText(file) + ":" + std::to_string(number) + ": ";
  const std::size_t blank = std::min(line.find_first_of(" \t"), line.size());
  const std::string name = line.substr(0, blank);
  for (const CommandRow& row : kCommands) {
    if (name != row.Name) continue;
    ScriptCommand command{.Line = number, .Action = row.Action, .Text = {}, .Menu = {}, .Key = {}};
    const Fault expected = row.Take(Trimmed(line.substr(blank)), command);
    if (expected != nullptr) throw TerminalError(ExitCode::File, place + name + " needs " + expected);
    return command;
  }
  throw TerminalError(ExitCode::File, place + "there is no command \"" + name + "\"; --help lists the commands");
}

}  // namespace

std::vector<ScriptCommand> ReadWindowScript(const std::filesystem::path& file) {
  std::vector<ScriptCommand> commands;
  CFileBytes bytes(file);
  std::string line;
  std::uint64_t number = 0;
  const auto endLine = [&] {
    ++number;
    const std::string text = Trimmed(line.substr(0, line.find('#')));
    line.clear();
    if (!text.empty()) commands.push_back(ParseLine(bytes.Path(), number, text));
  };
  for (std::string_view window = bytes.Peek(1); !window.empty(); window = bytes.Peek(1)) {
    for (const char c : window) {
      if (c == '\n')
        endLine();
      else
        line += c;
    }
    bytes.Drop(window.size());
  }
  endLine();
  return commands;
}

std::string ScriptHelpText() {
  constexpr std::size_t kHelpColumn = 36;
  std::string text;
  for (const CommandRow& row : kCommands) {
    std::string head = std::string("  ") + row.Name + " " + row.Value;
    head.resize(std::max(head.size() + 1, kHelpColumn), ' ');
    text += head + row.Help + "\n";
  }
  return text;
}
