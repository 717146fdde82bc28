// BookState: the state of a book and its titles, in single-byte texts. BookRecord: what the settings keep of a book.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "book_windows/model/book_window.h"
#include "grid_base/settings/registry.h"
#include "grid_ops/rows/column_filter.h"

// What a stored book becomes. Unknown is a filter without its security: the book stays as it was made.
enum class RestoredState { All, Blank, Widened, Security, Unknown };

// The texts of each state.
//
//   state     Filtered  BlankFilter  CurrentTitle   AllMark   ScriptTitle
//   all       0         0            all            all       empty
//   security  1         0            script title   empty     script title
//   widened   0         0            all            empty     script title
//   blank     1         1            empty          empty     any
struct BookState {
  static constexpr std::string_view kAllTitle = "Trade Book : All";
  static constexpr std::string_view BlankTitle = "Trade Book : ";

  // "Trade Book : " with the exchange and the security's display name.
  static std::string ScriptTitleOf(std::string_view exchange, std::string_view scriptName);

  // A new book: of one security, or of all trades.
  void BeginSecurity(const std::string& scriptTitle);
  void BeginAll();
  // A restored book: blank, or widened from the security of that title.
  void BeginBlank();
  void BeginWidened(const std::string& scriptTitle);
  // The menu command in an open book.
  void Widen();
  // Escape in a book that is not filtered: back to its security, or to the blank filter.
  void Narrow();

  // In bar, mini frame or tab.
  std::string Title() const { return Filtered && BlankFilter ? std::string(BlankTitle) : CurrentTitle; }
  // Title, book name and bar id without separators.
  std::string Key(std::string_view bookName, std::uint32_t barId) const;
  // An average over several securities has no meaning.
  bool ShowsAverages() const noexcept { return Filtered && !BlankFilter; }

  bool Filtered = false;
  bool BlankFilter = false;
  std::string CurrentTitle;
  std::string AllMark;
  std::string ScriptTitle;

 private:
  void NarrowToSecurity();
  void NarrowToBlank();
};

// What the settings keep of an open book from one run to the next. The place of its bar is stored apart, by the
// toolkit, under the book's key.
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
