#include "terminal/script/window_script.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>
#include <optional>

#include "terminal/common/errors.h"
#include "terminal/day/message_file.h"

namespace {

constexpr int kLongestWaitMs = 3600 * 1000;

// What the rest of the line should be; null if it was taken.
using Fault = const char*;

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\r");
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// Takes the first word off the text.
std::string TakeWord(std::string& text) {
  const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
  const std::string word = text.substr(0, end);
  text = Trimmed(text.substr(end));
  return word;
}

std::optional<int> WholeNumber(const std::string& text, int least, int most = std::numeric_limits<int>::max()) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  const bool isGood = error == std::errc() && stop == end && !text.starts_with('-') && value >= least && value <= most;
  return isGood ? std::optional(value) : std::nullopt;
}

Fault TakeNothing(const std::string& rest, ScriptCommand& /*command*/) {
  return rest.empty() ? nullptr : "nothing behind it";
}

Fault TakeText(const std::string& rest, ScriptCommand& command) {
  command.Text = rest;
  return rest.empty() ? "a text behind it" : nullptr;
}

Fault TakeFocus(const std::string& rest, ScriptCommand& command) {
  constexpr std::pair<const char*, ScriptFocus> kPlaces[] = {{"market-watch", ScriptFocus::MarketWatch},
                                                             {"positions", ScriptFocus::Positions},
                                                             {"chart", ScriptFocus::Chart},
                                                             {"book", ScriptFocus::Book},
                                                             {"none", ScriptFocus::None}};
  std::string title = rest;
  const std::string where = TakeWord(title);
  for (const auto& [name, place] : kPlaces) {
    if (where != name || (!title.empty() && place != ScriptFocus::Book)) continue;
    command.Focus = place;
    command.Text = title;
    return nullptr;
  }
  return "market-watch, positions, chart, book or none";
}

Fault TakeKey(const std::string& rest, ScriptCommand& command) {
  const auto key = ParseKeyPress(rest);
  if (key) command.Key = *key;
  return key ? nullptr : "a key such as F8, Escape or Ctrl+C";
}

Fault TakeWait(const std::string& rest, ScriptCommand& command) {
  if (rest == "played") return nullptr;
  if (rest == "live") {
    command.Action = ScriptAction::WaitLive;
    return nullptr;
  }
  const std::optional<int> value = WholeNumber(rest, 0, kLongestWaitMs);
  if (!value) return "played, live, or milliseconds up to an hour";
  command.Action = ScriptAction::WaitTime;
  command.Time = std::chrono::milliseconds(*value);
  return nullptr;
}

// False for a level without a text.
bool TakeLevels(const std::string& rest, ScriptCommand& command) {
  std::string level;
  for (const char c : rest + '>') {
    if (c != '>') {
      level += c;
      continue;
    }
    command.Menu.push_back(Trimmed(level));
    if (command.Menu.back().empty()) return false;
    level.clear();
  }
  return true;
}

Fault TakeMenu(const std::string& rest, ScriptCommand& command) {
  const bool isGood = TakeLevels(rest, command) && command.Menu.size() > 1;
  return isGood ? nullptr : "a menu and its entry, such as Day>Pause";
}

Fault TakeBookMenu(const std::string& rest, ScriptCommand& command) {
  return TakeLevels(rest, command) ? nullptr : "an entry of the book's menu, such as Export CSV>All Columns";
}

Fault TakeFilter(const std::string& rest, ScriptCommand& command) {
  command.Text = rest;
  command.Column = TakeWord(command.Text);
  return rest.empty() ? "a column's title, and the text for its field" : nullptr;
}

Fault TakeHeader(const std::string& rest, ScriptCommand& command) {
  std::string held = rest;
  command.Column = TakeWord(held);
  command.Ctrl = held == "ctrl";
  return rest.empty() || (!held.empty() && !command.Ctrl) ? "a column's title, and ctrl to select it" : nullptr;
}

Fault TakePlace(const std::string& rest, ScriptCommand& command) {
  constexpr std::pair<const char*, ScriptPlace> kPlaces[] = {
      {"left", ScriptPlace::Left},     {"right", ScriptPlace::Right}, {"top", ScriptPlace::Top},
      {"bottom", ScriptPlace::Bottom}, {"tab", ScriptPlace::Tab},     {"floating", ScriptPlace::Floating}};
  for (const auto& [name, place] : kPlaces) {
    if (rest != name) continue;
    command.Place = place;
    return nullptr;
  }
  return "left, right, top, bottom, tab or floating";
}

Fault TakeRows(const std::string& rest, ScriptCommand& command) {
  std::string last = rest;
  const std::optional<int> from = WholeNumber(TakeWord(last), 1);
  const std::optional<int> to = from ? WholeNumber(last, *from) : std::nullopt;
  if (!to) return "the first row and the last one, counted from 1";
  command.FirstRow = *from;
  command.LastRow = *to;
  return nullptr;
}

Fault TakeCount(const std::string& rest, ScriptCommand& command) {
  const std::optional<int> count = WholeNumber(rest, 0);
  command.Count = count.value_or(0);
  return count ? nullptr : "a number of rows";
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
    {"close-book", ScriptAction::CloseBook, TakeNothing, "", "presses the close button of the book"},
    {"select", ScriptAction::Select, TakeText, "SECURITY_ID", "makes its row of the market watch the current one"},
    {"focus", ScriptAction::Focus, TakeFocus, "market-watch|positions|chart|book [TITLE]|none",
     "gives the keys to that window"},
    {"key", ScriptAction::Key, TakeKey, "KEY", "presses a key: F8, Escape, Ctrl+C, Shift+PageDown"},
    {"wait", ScriptAction::WaitPlayed, TakeWait, "played|live|MS",
     "waits for the end of the day or of its download, or so many milliseconds"},
    {"screenshot", ScriptAction::Screenshot, TakeText, "FILE", "writes a picture of the windows"},
    {"menu", ScriptAction::Menu, TakeMenu, "TEXT>TEXT", "runs an entry of the menu bar"},
    {"filter", ScriptAction::Filter, TakeFilter, "COLUMN [TEXT]",
     "types into the book's filter bar; no text: empties it"},
    {"find", ScriptAction::Find, TakeText, "TEXT",
     "types into the find bar of the grid with the focus, or of the book"},
    {"header", ScriptAction::Header, TakeHeader, "COLUMN [ctrl]",
     "clicks a header: sorts; with ctrl selects the column"},
    {"rows", ScriptAction::Rows, TakeRows, "FROM TO", "selects rows of the book, counted from 1"},
    {"book-menu", ScriptAction::BookMenu, TakeBookMenu, "TEXT>TEXT", "runs an entry of the book's context menu"},
    {"place", ScriptAction::Place, TakePlace, "left|right|top|bottom|tab|floating", "puts the book there"},
    {"save-as", ScriptAction::SaveAs, TakeText, "FILE", "answers the next dialog that asks for a file to save"},
    {"cancel-save", ScriptAction::CancelSave, TakeNothing, "", "cancels the next dialog that asks for one"},
    {"answer", ScriptAction::Answer, TakeText, "TEXT", "presses that button of the dialog that is up"},
    {"choose", ScriptAction::Choose, TakeText, "TEXT", "selects that item of a check list in the dialog"},
    {"check", ScriptAction::Check, TakeText, "TEXT", "checks or clears it"},
    {"expect-rows", ScriptAction::ExpectRows, TakeCount, "COUNT", "fails unless the book shows so many rows"},
    {"expect-text", ScriptAction::ExpectText, TakeText, "TEXT", "fails unless dialog or book shows that text"},
    {"usage", ScriptAction::Usage, TakeText, "NAME", "appends what the program holds to out/usage.csv"},
    {"exit", ScriptAction::Exit, TakeNothing, "", "closes the terminal"},
};

ScriptCommand ParseLine(const std::filesystem::path& file, std::uint64_t number, const std::string& line) {
  const std::string place = PathText(file) + ":" + std::to_string(number) + ": ";
  const std::size_t blank = std::min(line.find_first_of(" \t"), line.size());
  const std::string name = line.substr(0, blank);
  for (const CommandRow& row : kCommands) {
    if (name != row.Name) continue;
    ScriptCommand command{.Line = number, .Action = row.Action};
    const Fault expected = row.Take(Trimmed(line.substr(blank)), command);
    if (expected != nullptr) throw TerminalError(ExitCode::File, place + name + " needs " + expected);
    return command;
  }
  throw TerminalError(ExitCode::File, place + "there is no command \"" + name + "\"; --help lists the commands");
}

}  // namespace

std::vector<ScriptCommand> ReadWindowScript(const std::filesystem::path& file) {
  std::vector<ScriptCommand> commands;
  FileBytes bytes(file);
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
  constexpr std::size_t kHelpColumn = 43;
  std::string text;
  for (const CommandRow& row : kCommands) {
    std::string head = std::string("  ") + row.Name + " " + row.Value;
    head.resize(std::max(head.size() + 1, kHelpColumn), ' ');
    text += head + row.Help + "\n";
  }
  return text;
}

namespace {

struct KeyName {
  const char* Name;
  std::uint8_t Code;
};
// Letters and digits are their own codes and stand for themselves.
constexpr KeyName kKeys[] = {
    {"Backspace", 0x08}, {"Tab", 0x09},    {"Enter", 0x0D},  {"Escape", 0x1B}, {"Space", 0x20}, {"PageUp", 0x21},
    {"PageDown", 0x22},  {"End", 0x23},    {"Home", 0x24},   {"Left", 0x25},   {"Up", 0x26},    {"Right", 0x27},
    {"Down", 0x28},      {"Insert", 0x2D}, {"Delete", 0x2E}, {"Menu", 0x5D},   {"F1", 0x70},    {"F2", 0x71},
    {"F3", 0x72},        {"F4", 0x73},     {"F5", 0x74},     {"F6", 0x75},     {"F7", 0x76},    {"F8", 0x77},
    {"F9", 0x78},        {"F10", 0x79},    {"F11", 0x7A},    {"F12", 0x7B},
};

struct HeldName {
  const char* Name;
  bool KeyPress::*Place;
};
constexpr HeldName kHeld[] = {{"Ctrl", &KeyPress::Ctrl}, {"Shift", &KeyPress::Shift}, {"Alt", &KeyPress::Alt}};

char Upper(char c) {
  return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

bool SameName(std::string_view text, std::string_view name) {
  if (text.size() != name.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (Upper(text[i]) != Upper(name[i])) return false;
  return true;
}

bool IsOwnCode(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

std::uint8_t CodeOf(std::string_view name) {
  if (name.size() == 1 && IsOwnCode(Upper(name[0]))) return static_cast<std::uint8_t>(Upper(name[0]));
  for (const KeyName& key : kKeys)
    if (SameName(name, key.Name)) return key.Code;
  return 0;
}

bool TakeHeld(std::string_view name, KeyPress& key) {
  for (const HeldName& held : kHeld) {
    if (!SameName(name, held.Name) || key.*held.Place) continue;
    key.*held.Place = true;
    return true;
  }
  return false;
}

}  // namespace

std::optional<KeyPress> ParseKeyPress(std::string_view text) {
  KeyPress key;
  for (std::size_t plus = text.find('+'); plus != std::string_view::npos; plus = text.find('+')) {
    if (!TakeHeld(text.substr(0, plus), key)) return std::nullopt;
    text.remove_prefix(plus + 1);
  }
  key.Code = CodeOf(text);
  return key.Code == 0 ? std::nullopt : std::optional(key);
}

std::string KeyPressText(const KeyPress& key) {
  std::string name;
  if (IsOwnCode(static_cast<char>(key.Code))) name = static_cast<char>(key.Code);
  for (const KeyName& row : kKeys)
    if (row.Code == key.Code) name = row.Name;
  if (name.empty()) return {};
  std::string text;
  for (const HeldName& held : kHeld)
    if (key.*held.Place) text += std::string(held.Name) + "+";
  return text + name;
}
