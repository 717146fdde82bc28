// BookList: the open books: how a book comes to be from the menu command, how it widens, narrows and closes, and what
// the terminal's messages do to all of them. Makes its first window with the first book; without a display there are no
// books.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "book_windows/model/book_windows.h"
#include "book_windows/model/plugin_state.h"
#include "grid_base/windows/base_grid.h"
#include "grid_base/windows/window_boxes.h"
#include "grid_ops/rows/book_totals.h"
#include "host_link/host_functions/function_table.h"

// TerminalMasters: the master records of the running terminal.
class TerminalMasters : public SecurityMasters {
 public:
  explicit TerminalMasters(const CQORDLLComman& terminal) noexcept : Terminal(terminal) {}
  std::optional<double> MultiplierOf(const FilterKey& security) const override {
    SecurityMasterData data;
    if (!Terminal.GetMasterRequest(security.Exchange, security.SecurityID, data)) return {};
    return data.Multiplier;
  }

 private:
  const CQORDLLComman& Terminal;
};

class CTradeBookBar;
class CTradeBookGrid;
class CQORPDockingControlBar;
class wxRect;
class wxWindow;

// Addresses of the module's functions that travel in the messages of books.
struct BookCallbacks {
  std::uint64_t OnPluginMessage = 0;
  std::uint64_t PropertyListRequest = 0;
  std::uint64_t PropertyChanged = 0;
};

class BookList : public BookWindows {
 public:
  enum class Close { HideBar, LeaveToTab };

  BookList(PluginState& state, CQORDLLComman& terminal, const BookCallbacks& callbacks);
  ~BookList() override;

  void OpenBookByCommand() override;
  void ForgetTrades() override;
  void ReapplyFilters() override;
  void SaveLayout() override;
  void RestoreLayout() override;
  void RepaintAllBooks() override;
  bool SelectedSecurity(std::uint64_t bookAddress, std::string& exchange, std::string& securityId) override;

  // With several books allowed a new one; else only while none is open.
  void OpenNewBook();
  // A bar with its grid, that floats there and is hidden yet; null when no window can be made. It has no state and no
  // trades come to it before it is in a list.
  CTradeBookBar* MakeBar(const std::string& bookName, const wxRect& rect);
  // Puts the book before the user, with the focus; from now on it is open.
  void ShowBook(CTradeBookBar& bar);
  // Back to the book's security, or to the blank filter.
  void NarrowToFilter(CTradeBookBar& bar);
  // Takes the book out of the lists, as a bar that is in none is left alone; hides it unless its tab does.
  void CloseBook(CTradeBookBar& bar, Close how);
  // A bar that is being destroyed.
  void ForgetBar(CTradeBookBar& bar);

  PluginState& State() noexcept { return Plugin; }
  const GridHost& Host() const noexcept { return Shared; }
  const SecurityMasters& Masters() const noexcept { return TerminalRecords; }
  const BookCallbacks& Callbacks() const noexcept { return Entries; }
  CQORDLLComman& Terminal() noexcept { return Functions; }
  // The grid that has the focus, open or closed; null for none.
  CTradeBookGrid* FocusedGrid() const;

  // The terminal's pane asks for the properties of the book with the focus, and tells of one that was changed. Null
  // arguments do nothing.
  void PropertyListRequest(CQORPPropList* list, const void* second);
  void PropertyChanged(CQORPProp* property, CTradeBookGrid* grid);
  // Each book takes the changed value over, and its totals follow the colours.
  void ApplyPropertyToAllBooks(const CQORPProp& property);

  // A terminal may give one id to several bars, and one without GetPluginBarID gives 0 to all.
  std::multimap<std::uint32_t, CTradeBookBar*> BarsById;
  std::map<const wxWindow*, CTradeBookBar*> BooksByWindow;  // by the grid, which has the focus in an open book

 private:
  void OpenBook(const std::string& bookName);
  void AskSelectedSecurity(const CQORPDockingControlBar* asker);
  void BeginSecurityBook(CTradeBookBar& bar);
  void BeginAllBook(CTradeBookBar& bar);
  void WidenBook(CTradeBookBar& bar);
  CTradeBookBar* FocusedBook() const;
  bool HasBar(const CTradeBookBar& bar) const;
  void DropFromLists(CTradeBookBar& bar);

  std::set<CTradeBookBar*> Bars;  // open, closed or hidden: all that their frame still has
  PluginState& Plugin;
  CQORDLLComman& Functions;
  WindowBoxes Boxes;
  TerminalMasters TerminalRecords;
  BookCallbacks Entries;
  GridHost Shared;
};
