// TradeBookScreen: the books of this process on the screen: makes their windows, knows the focus, and ends the toolkit
// with them.
#pragma once

#include "book_windows/model/book_registry.h"
#include "grid_base/windows/base_grid.h"
#include "grid_base/windows/window_boxes.h"

class CTradeBookGrid;

// Addresses of the module's functions that travel in the messages of books.
struct BookCallbacks {
  std::uint64_t OnPluginMessage = 0;
  std::uint64_t PropertyListRequest = 0;
  std::uint64_t PropertyChanged = 0;
};

class TradeBookScreen : public BookScreen {
 public:
  TradeBookScreen(PluginState& state, CQORDLLComman& terminal, const BookCallbacks& callbacks);
  ~TradeBookScreen() override;

  bool Start() override;
  const void* BarWithFocus() const override;
  BookWindow* MakeWindow(Book& book, const SettingsRectangle& rect, std::uint32_t barId) override;

  // The grid with the focus, of an open or a closed book; null for none.
  static CTradeBookGrid* FocusedGrid();
  // The terminal's property pane reports a change. Null arguments are ignored.
  static void PropertyChanged(CQORPProp* property, CTradeBookGrid* grid);

  PluginState& State;
  CQORDLLComman& Terminal;
  const BookCallbacks Callbacks;
  const GridHost Host;

 private:
  // The toolkit may run for books or for a message box; it ends after the last book.
  struct ToolkitEnd {
    ~ToolkitEnd();
  };
  ToolkitEnd End;
  WindowBoxes Boxes;

 public:
  BookRegistry Registry;
};
