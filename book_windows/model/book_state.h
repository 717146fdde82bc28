// BookState: which of its four states a book is in, and the titles that go with it. Plain data with single-byte texts.
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

struct BookState {
  static constexpr std::string_view kAllTitle = "Trade Book : All";
  static constexpr std::string_view kTitleStart = "Trade Book : ";

  // "Trade Book : " with the exchange and the security's display name.
  static std::string ScriptTitleOf(std::string_view exchange, std::string_view scriptName);

  // A new book: of one security, or of all trades.
  void BeginSecurity(const std::string& scriptTitle);
  void BeginAll();
  // A book that comes back blank, or widened from the security of that title.
  void BeginBlank();
  void BeginWidened(const std::string& scriptTitle);
  // The menu command in an open book.
  void Widen();
  // Escape in a book that is not filtered: back to its security, or to the blank filter that lets nothing in.
  void Narrow();

  // What bar, mini frame or tab say.
  std::string Title() const { return Filtered && BlankFilter ? std::string(kTitleStart) : CurrentTitle; }
  // The book's key: title, book name and bar id, with nothing between them.
  std::string Key(std::string_view bookName, std::uint32_t barId) const;
  // An average over many securities would mean nothing.
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
