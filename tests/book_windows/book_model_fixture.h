// BookModelTest: the list of books without a display.
#pragma once

#include <gtest/gtest.h>

#include "tests/book_windows/book_desk.h"
#include "tests/support/fake_books.h"

inline constexpr const char* kAll = "Trade Book : All";
inline constexpr const char* kBlank = "Trade Book : ";
inline constexpr const char* kGold = "Trade Book : COMEX GOLD 201312";

class BookModelTest : public testing::Test {
 protected:
  BookModelTest() { Start(); }
  // A new run of the plug-in over the files of the one before.
  void Start() {
    Registry.reset();
    Desk.StartAgain();
    Screen.Focused = nullptr;
    Registry = std::make_unique<BookRegistry>(*Desk.State, *Desk.Functions, Screen, BookDesk::OnPluginMessage());
    Screen.Registry = Registry.get();
    Desk.Connect(*Registry);
  }
  // By the menu command, no book having the focus.
  FakeBookWindow& Open() {
    Screen.Focused = nullptr;
    Registry->OnBookCommand();
    return *Screen.Windows.back();
  }
  FakeBookWindow& OpenAll() {
    BookDesk::SelectNothing();
    return Open();
  }
  FakeBookWindow& OpenGold(const char* exchange = "COMEX") {
    BookDesk::Select(exchange, "GC1");
    return Open();
  }
  void Close(FakeBookWindow& window) { Registry->CloseBook(window.Shown, BookRegistry::Close::HideBar); }
  std::size_t InLists() const {
    return Registry->BarsById.size() + Registry->BooksByWindow.size() + Desk.State->BooksByKey.size();
  }

  BookDesk Desk;
  FakeBookScreen Screen;
  std::unique_ptr<BookRegistry> Registry;
};
