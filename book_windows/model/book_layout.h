// BookRecord: what the settings keep of an open book from one run to the next. The place of its bar is stored apart, by
// the toolkit, under the book's key.
//
//   section PLUGINDLLS\Trade Book\RecentFiles; every value name but the first ends with the entry's number
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
#include "book_windows/model/book_window.h"
#include "grid_base/settings/registry.h"
#include "grid_ops/rows/column_filter.h"

struct BookRecord {
  std::string BookName;
  FilterKey Security{};
  std::string ScriptTitle;
  std::uint32_t LastNum = 0;
  std::optional<std::string> ScriptTradeName;
  BookPlace Place;
};

inline constexpr int kMostRestored = 15;

// The text for the state of a book; nothing if none is stored.
std::optional<std::string> ScriptTradeNameOf(const BookState& state);
RestoredState RestoredStateOf(const BookRecord& record);

// False if nothing can be written. Intentional: a value that is not written keeps what an earlier save wrote.
bool WriteBookRecord(CQORPRegistry& settings, int number, const BookRecord& record);
// Nothing without the value that holds the name; every other value may be missing.
std::optional<BookRecord> ReadBookRecord(CQORPRegistry& settings, int number);
