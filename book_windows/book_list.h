// BookList: the open books: how a book comes to be from the menu command, how it widens, narrows and closes, and what
// the terminal's messages do to all of them. Not what a book holds: grid_ops/book_rows.h. Makes its first window with
// the first book; without a display there are no books. Used on the terminal's calling thread only.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "book_windows/book_windows.h"
#include "book_windows/plugin_state.h"
#include "book_windows/terminal_masters.h"
#include "grid_base/base_grid.h"

class CTradeBookBar;
class CQORPDockingControlBar;
class wxWindow;

class BookList : public BookWindows {
 public:
  enum class Close { HideBar, LeaveToTab };

  // onPluginMessage is the address of the module's entry of that name, which travels in messages.
  BookList(PluginState& state, const CQORDLLComman& terminal, std::uint64_t onPluginMessage);
  ~BookList() override;

  void OpenBookByCommand() override;
  void ReapplyFilters() override;
  void RepaintAllBooks() override;
  bool SelectedSecurity(std::uint64_t bookAddress, std::string& exchange, std::string& securityId) override;

  // With several books allowed a new one; else only while none is open.
  void OpenNewBook();
  // Back to the book's security, or to the blank filter.
  void NarrowToFilter(CTradeBookBar& bar);
  // Takes the book out of the lists, as a bar that is in none is left alone; hides it unless its tab does.
  void CloseBook(CTradeBookBar& bar, Close how);
  // A bar that is being destroyed.
  void ForgetBar(CTradeBookBar& bar);

  PluginState& State() noexcept { return Plugin; }
  const GridHost& Host() const noexcept { return Shared; }
  const SecurityMasters& Masters() const noexcept { return TerminalRecords; }
  std::uint64_t OnPluginMessageAddress() const noexcept { return OnPluginMessage; }
  const CQORDLLComman& Terminal() const noexcept { return Functions; }

  std::map<std::uint32_t, CTradeBookBar*> BarsById;
  std::map<const wxWindow*, CTradeBookBar*> BooksByWindow;  // by the grid, which has the focus in an open book

 private:
  void OpenBook(const std::string& bookName);
  void AskSelectedSecurity(const CQORPDockingControlBar* asker);
  void BeginSecurityBook(CTradeBookBar& bar);
  void BeginAllBook(CTradeBookBar& bar);
  void WidenBook(CTradeBookBar& bar);
  CTradeBookBar* FocusedBook() const;

  std::set<CTradeBookBar*> Bars;  // open, closed or hidden: all that their frame still has
  PluginState& Plugin;
  const CQORDLLComman& Functions;
  TerminalMasters TerminalRecords;
  std::uint64_t OnPluginMessage;
  GridHost Shared;
};
