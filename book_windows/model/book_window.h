// BookWindow and BookScreen: what the model of books needs of windows. book_windows/windows/ implements both, tests
// fake them.
#pragma once

#include <cstdint>
#include <vector>

#include "grid_base/settings/registry.h"
#include "grid_base/settings/registry_store.h"

class Book;
class CQORPProp;
class CQORPPropList;

// Where the bar of a book stands.
struct BookPlace {
  bool Docked = false;
  bool Tabbed = false;
  SettingsRectangle Rect;  // of the bar on the screen, in pixels
};

// The window of one book: a docking bar around the grid of its rows.
class BookWindow {
 public:
  virtual ~BookWindow() = default;

  // Changes of the book. New rows keep current row and selection with their trades; replaced ones with their places.
  virtual void OnRowsChanged(bool replaced) = 0;
  virtual void OnTotalsChanged() = 0;
  virtual void OnTitleChanged() = 0;
  virtual void OnSortChanged() = 0;
  virtual void OnSettingsChanged() = 0;

  // Turns the grid into one with virtual rows. Returns the sort state of each column, as the profile restored it.
  virtual std::vector<int> BeginVirtualMode() = 0;
  // -1 for none. Follows the trades that came in since the last refresh.
  virtual int CurrentRow() = 0;
  virtual void ClearCurrentRow() = 0;

  virtual void ShowBar(bool shown) = 0;
  virtual void FocusBar() = 0;
  virtual void FocusGrid() = 0;
  virtual bool HoldsFocus() const = 0;
  virtual bool Floats() const = 0;

  virtual BookPlace Place() const = 0;
  virtual void LoadPlace(CQORPRegistry& settings) = 0;
  virtual void SavePlace(CQORPRegistry& settings) = 0;
  virtual void SaveColumnProfile() = 0;
  virtual GridFont Font() const = 0;

  virtual void PopulateProperties(CQORPPropList& list) = 0;
  virtual void ApplyProperty(const CQORPProp& property) = 0;

  // The addresses of bar and grid, as messages to the terminal name them.
  virtual void* BarAddress() = 0;
  virtual const void* GridAddress() const = 0;

  // Ends the window, which calls BookRegistry::ForgetBook.
  virtual void DestroyBar() = 0;
};

class BookScreen {
 public:
  virtual ~BookScreen() = default;

  // Starts the window system with the first book. False without a display: there are no books then.
  virtual bool Start() = 0;
  // The bar around the window with the focus; null for none.
  virtual const void* BarWithFocus() const = 0;
  // Makes a hidden floating window; null on failure.
  virtual BookWindow* MakeWindow(Book& book, const SettingsRectangle& rect, std::uint32_t barId) = 0;
};
