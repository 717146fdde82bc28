// BookRegistry: the open books: how they open, widen, narrow and close, what the terminal's messages do to all of them,
// and how they are saved and restored.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "book_windows/model/book.h"
#include "host_link/host_functions/function_table.h"

// The master records of the running terminal.
class TerminalMasters : public SecurityMasters {
 public:
  explicit TerminalMasters(const CQORDLLComman& terminal) noexcept : Terminal(terminal) {}
  std::optional<double> MultiplierOf(const FilterKey& security) const override;

 private:
  const CQORDLLComman& Terminal;
};

struct BookRecord;

class BookRegistry {
 public:
  enum class Close { HideBar, LeaveToTab };

  // onPluginMessage is the address that the terminal answers questions to.
  BookRegistry(PluginState& state, const CQORDLLComman& terminal, BookScreen& screen, std::uint64_t onPluginMessage)
      : State(state), Terminal(terminal), Masters(terminal), Screen(screen), OnPluginMessage(onPluginMessage) {}
  ~BookRegistry();

  // The menu command: widens the book with the focus, else opens a new one.
  void OnBookCommand();
  // With many books allowed a new one; otherwise only while none is open.
  void OpenNewBook();
  // Escape in the grid: narrows a book of all trades to its security or to the blank filter; closes any other that
  // floats.
  void OnEscape(Book& book);
  // Escape in the bar: closes a floating book.
  void CloseByEscape(Book& book);
  // Removes the book from the lists; a book that is in none stays as it is. The window lives on, hidden.
  void CloseBook(Book& book, Close how);
  // The window is being destroyed: the book ends here.
  void ForgetBook(const Book& book);

  // Message 30020: every open book applies its filters again.
  void RebuildAllBooks();
  // Message 30022: no book, open or closed, keeps a reference to a trade.
  void ClearAllBooks();
  // The refresh callback.
  void RepaintAllBooks();
  // Message 32022: false if the address is no open book or nothing is selected in it.
  bool SelectedSecurity(std::uint64_t barAddress, std::string& exchange, std::string& securityId);
  // Messages 30021 and 30026. With no book open nothing is written. Entries that an earlier save wrote behind the last
  // book stay. Intentional: they come back at the next start, fifteen books at most.
  void SaveBookLayout(CQORPRegistry& settings);
  void RestoreBookLayout(CQORPRegistry& settings);

  // The terminal's property pane asks for the properties of the book with the focus. Null arguments are ignored.
  void PropertyListRequest(CQORPPropList* list, const void* second);
  // Every book with a key takes the changed property; totals follow the colours.
  void ApplyPropertyToAllBooks(const CQORPProp& property);

  Book* FocusedBook() const;

  // A terminal may give one id to several bars, and one without GetPluginBarID gives 0 to all.
  std::multimap<std::uint32_t, Book*> BarsById;
  std::map<const void*, Book*> BooksByWindow;  // by the grid

 private:
  void OpenBook(const std::string& name);
  void AskSelectedSecurity(const void* askingBar);
  Book* MakeBook(const std::string& name, const SettingsRectangle& rect);
  void NarrowToFilter(Book& book);
  void RestoreBook(const BookRecord& record, CQORPRegistry& settings);
  void ShowBook(Book& book);
  bool IsOpen(const Book& book) const;
  void DropFromLists(const Book& book);

  std::vector<std::unique_ptr<Book>> Books;  // open and closed ones: all that have a window
  PluginState& State;
  const CQORDLLComman& Terminal;
  TerminalMasters Masters;
  BookScreen& Screen;
  std::uint64_t OnPluginMessage;
};
