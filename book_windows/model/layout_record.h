// BookRecord: what the settings keep of an open book from one run to the next, and the values that it is kept in. No
// window.
//
//   section PLUGINDLLS\Trade Book\RecentFiles; the name of every value but the first ends with the entry's number
//     <number>             text       BookName
//     FilterKeyExchange    text       Security.Exchange
//     FilterKeySecurityID  text       Security.SecurityID
//     ScriptName           text       ScriptTitle
//     LastNum              text       LastNum in decimal; read as a number
//     ScriptTradeName      text       the state of the book; may be absent
//     Dock, Tab            0 or 1     never read
//     Rect                 rectangle  of the bar on the screen
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "book_windows/model/book_state.h"
#include "grid_base/settings/registry.h"
#include "grid_ops/columns/filter_key.h"

struct BookRecord {
  std::string BookName;
  FilterKey Security{};
  std::string ScriptTitle;
  std::uint32_t LastNum = 0;
  std::optional<std::string> ScriptTradeName;
  bool Docked = false;
  bool Tabbed = false;
  SettingsRectangle Rect;
};

// What stands for the state of a book; nothing where none does.
std::optional<std::string> ScriptTradeNameOf(const BookState& state);

// What a record makes of a book. Unknown is a filter without its security: the book stays as it was made.
enum class RestoredState { All, Blank, Widened, Security, Unknown };
RestoredState RestoredStateOf(const BookRecord& record);

// False when nothing can be written. What is not written stays as a former save left it: meant so.
bool WriteBookRecord(CQORPRegistry& settings, int number, const BookRecord& record);
// Nothing without the value that holds the name; every other value may be missing.
std::optional<BookRecord> ReadBookRecord(CQORPRegistry& settings, int number);
