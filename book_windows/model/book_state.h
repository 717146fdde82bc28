// BookState: the state of a book and its titles, in single-byte texts.
//
//   state     Filtered  BlankFilter  CurrentTitle   AllMark   ScriptTitle
//   all       0         0            all            all       empty
//   security  1         0            script title   empty     script title
//   widened   0         0            all            empty     script title
//   blank     1         1            empty          empty     any
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// What a stored book becomes. Unknown is a filter without its security: the book stays as it was made.
enum class RestoredState { All, Blank, Widened, Security, Unknown };

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
