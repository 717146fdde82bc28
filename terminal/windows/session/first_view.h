// FirstView: the windows of a start that remembers nothing, and the way back to them: the market watch with a book of
// all trades docked below it.
#pragma once

#include <functional>
#include <utility>

#include "terminal/windows/session/session_windows.h"

class FirstView {
 public:
  // openBook runs the plug-in's menu entry; false if that is impossible now.
  FirstView(SessionWindows& windows, BookBars& books, std::function<bool()> openBook)
      : Windows(windows), Books(books), OpenBook(std::move(openBook)) {}

  // Opens a book of all trades below the market watch, unless the plug-in has brought books of its own.
  void Begin();
  // Brings back frame, bars and columns of the market watch. The book that was opened first stands below the market
  // watch, the others are tabs beside it; without any, one of all trades is opened.
  void Restore();

 private:
  CQORPDockingControlBar* OpenBookOfAll();
  void PlaceBelow(CQORPDockingControlBar& book);

  SessionWindows& Windows;
  BookBars& Books;
  std::function<bool()> OpenBook;
};
