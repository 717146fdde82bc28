#include "book_windows/model/book_state.h"

std::string BookState::ScriptTitleOf(std::string_view exchange, std::string_view scriptName) {
  return std::string(BlankTitle).append(exchange).append(" ").append(scriptName);
}

void BookState::BeginSecurity(const std::string& scriptTitle) {
  Filtered = true;
  BlankFilter = false;
  CurrentTitle = ScriptTitle = scriptTitle;
}

void BookState::BeginAll() {
  Filtered = false;
  CurrentTitle = AllMark = kAllTitle;
}

void BookState::BeginBlank() {
  Filtered = true;
  NarrowToBlank();
}

void BookState::BeginWidened(const std::string& scriptTitle) {
  CurrentTitle = kAllTitle;
  ScriptTitle = scriptTitle;
}

// A blank book becomes one of all trades: the next Escape makes it blank again.
void BookState::Widen() {
  Filtered = false;
  AllMark = BlankFilter ? kAllTitle : std::string_view();
  CurrentTitle = kAllTitle;
}

void BookState::Narrow() {
  if (AllMark.empty() && !CurrentTitle.empty())
    NarrowToSecurity();
  else if (AllMark == CurrentTitle)
    NarrowToBlank();
  Filtered = true;
}

void BookState::NarrowToSecurity() {
  BlankFilter = false;
  CurrentTitle = ScriptTitle;
}

void BookState::NarrowToBlank() {
  BlankFilter = true;
  CurrentTitle.clear();
  AllMark.clear();
}

std::string BookState::Key(std::string_view bookName, std::uint32_t barId) const {
  return Title().append(bookName).append(std::to_string(barId));
}
