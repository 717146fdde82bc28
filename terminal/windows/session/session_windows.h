// SessionWindows: the main frame with the terminal's own bars, from the first show to the close; BookBars: the bars
// that the plug-in puts into it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "terminal/link/terminal_host.h"
#include "terminal/windows/frame/chart_bar.h"
#include "terminal/windows/frame/main_frame.h"
#include "terminal/windows/frame/positions_bar.h"
#include "terminal/windows/frame/terminal_bars.h"

class SessionWindows {
 public:
  struct Events {
    std::function<void(int)> Command;    // with the id of the menu entry
    std::function<void()> RowOpened;     // of the market watch or the positions
    std::function<void()> OwnBarClosed;  // by the user
    std::function<void()> SelectedRows;  // the chart shall show their times
  };
  // What the lists show; it must outlive the windows.
  struct Lists {
    MarketWatch& Watch;
    PositionList& Positions;
    MessageLog& Messages;
  };
  // Makes frame and bars at the places of the last time. Throws TerminalError.
  void Make(WindowMemory& memory, const Lists& lists, const TradeLedger& trades, const Events& events);
  void Show();
  // On the beat.
  void ShowChanges();
  void Save(WindowMemory& memory);
  // Frame and bars as at a first start.
  void Reset();
  // Of the frame at a first start.
  static wxRect FirstRect();
  void Destroy();

  // Null once it is closed. The frame owns the bars.
  MainFrame* Frame() const { return MainWindow.get(); }
  MarketWatchBar& Watch() const { return *WatchBar; }
  PositionsBar& Positions() const { return *PositionRows; }
  LogBar& Messages() const { return *MessagesBar; }
  ChartBar& Chart() const { return *ChartsBar; }
  // Null while the frame goes: the plug-in may ask for it then.
  PropertyPane* Properties() const { return PropertiesBar.get(); }

 private:
  void MakeFrame(WindowMemory& memory, const std::function<void(int)>& command);
  std::vector<TerminalBar*> OwnBars() const {
    return {WatchBar, PositionRows, PropertiesBar.get(), MessagesBar, ChartsBar};
  }

  wxWeakRef<MainFrame> MainWindow;
  MarketWatchBar* WatchBar = nullptr;
  PositionsBar* PositionRows = nullptr;
  LogBar* MessagesBar = nullptr;
  ChartBar* ChartsBar = nullptr;
  wxWeakRef<PropertyPane> PropertiesBar;
};

class BookBars {
 public:
  BookBars(const SessionWindows& windows, const TerminalHost& host) : Windows(windows), Host(host) {}

  bool Has(const CQORPDockingControlBar& bar) const { return Host.Bars().contains(bar.GetDlgCtrlID()); }
  // The books that are shown, in the order in which they were opened.
  std::vector<CQORPDockingControlBar*> Shown() const;
  // The one that was opened or had the focus last; null for none.
  CQORPDockingControlBar* Current() const;
  // The first with that text in its title; null for none.
  CQORPDockingControlBar* Titled(const std::string& title) const;

  // The focus is in that bar, which may be any or null.
  void NoteFocus(const CQORPDockingControlBar* bar);
  void MakeCurrent(const CQORPDockingControlBar* bar) {
    Last = bar;
    Selecting = SelectingBar::Book;
  }
  // Which of the bars with securities had the focus last.
  enum class SelectingBar : std::uint8_t { MarketWatch, Positions, Book };
  SelectingBar LastSelecting() const noexcept { return Selecting; }
  // A book is being opened, which becomes the current one.
  void NoteOpening() { Last = nullptr; }
  // The address of a bar that may be in the midst of its close, or of anything else.
  void NoteClosed(const void* window) { Closed.push_back(window); }
  // A plug-in only hides a bar of its own, which belongs to the frame; as nothing shows it again, it is destroyed here.
  // Deferred until calls of the plug-in and events of a bar have returned.
  void DestroyClosed();

 private:
  const SessionWindows& Windows;
  const TerminalHost& Host;
  const CQORPDockingControlBar* Focused = nullptr;  // to compare: may be gone, as may the next two
  const CQORPDockingControlBar* Last = nullptr;     // null for the one that was opened last
  SelectingBar Selecting = SelectingBar::MarketWatch;
  std::vector<const void*> Closed;
};
