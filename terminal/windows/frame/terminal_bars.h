// The terminal's own bars: market watch, log of messages, properties of a book. TerminalBar is their base: it holds one
// window, stores its place and tells when the user closes it.
#pragma once

#include <wx/panel.h>
#include <wx/weakref.h>

#include <functional>

#include "terminal/link/plugin_link.h"
#include "terminal/link/plugin_messages.h"
#include "terminal/program/window_memory.h"
#include "terminal/windows/frame/log_grid.h"
#include "terminal/windows/frame/market_watch_grid.h"
#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/properties/property_list.h"

class TerminalBar : public CQORPDockingControlBar {
 public:
  // The section of the file of windows that keeps the place.
  explicit TerminalBar(const wchar_t* section) : Section(section) {}

  virtual void Save(WindowMemory& memory);
  // As stored, else at its first place.
  virtual void Restore(WindowMemory& memory);
  // As at a first start.
  virtual void Reset();

  void OnPressCloseButton() override;
  int OnTabCloseButton() override;

  // Called when the user has closed the bar.
  std::function<void()> Closed;

 protected:
  // Fills the bar with a child window.
  void Hold(wxWindow* content);
  // Of a bar that is hidden and floats where it was created.
  virtual void PlaceFirst() = 0;

 private:
  const wchar_t* Section;
  wxRect FirstRect;  // in which it would float
};

// A bar with one of the terminal's lists.
class ListBar : public TerminalBar {
 public:
  // Sections of the file of windows: of the bar's place, and of the columns, filter and sort of its list.
  ListBar(const wchar_t* section, const wchar_t* listSection) : TerminalBar(section), ListSection(listSection) {}

  void Save(WindowMemory& memory) override;
  void Restore(WindowMemory& memory) override;
  void Reset() override;
  // Call on the beat; a hidden bar costs nothing.
  virtual void ShowChanges();
  void OnBarFocus() override;

 protected:
  // Fills the bar; the list is a child window.
  void HoldList(ListGrid* list);

 private:
  const wchar_t* ListSection;
  ListGrid* List = nullptr;
  ListPlace FirstPlace;
};

class MarketWatchBar : public ListBar {
 public:
  MarketWatchBar() : ListBar(L"MarketWatchBar", L"MarketWatch") {}
  // False when no window could be made.
  bool Create(CQORPDockingManager& manager, std::uint32_t id, MarketWatch& rows, std::function<void()> opened);
  MarketWatchGrid& Grid() const noexcept { return *Rows; }

 private:
  void PlaceFirst() override;  // a tab

  MarketWatchGrid* Rows = nullptr;  // a child window
};

class LogBar : public ListBar {
 public:
  LogBar() : ListBar(L"LogBar", L"Messages") {}
  // False when no window could be made.
  bool Create(CQORPDockingManager& manager, std::uint32_t id, MessageLog& log);
  LogGrid& Grid() const noexcept { return *Rows; }

 private:
  void PlaceFirst() override;  // at the bottom, hidden

  LogGrid* Rows = nullptr;  // a child window
};

// The pane with the properties of a book; the plug-in fills it and takes over changes.
// The plug-in is called with a grid only while its bar is shown. When the bar closes or goes, the pane is empty.
class PropertyPane : public TerminalBar {
 public:
  PropertyPane() : TerminalBar(L"PropertyBar") {}
  // False when no window could be made.
  bool Create(CQORPDockingManager& manager, std::uint32_t id);

  // Has the plug-in fill the list for the book with the focus; nothing here takes the focus.
  void Fill(const PropertyRequest& request, PluginLink& plugin);
  // The plug-in has filled the list.
  void ShowFilled();
  // Empties the pane if the grid's bar is hidden.
  void FollowBook();
  void Empty();

  void OnBarFocus() override;

  CQORPPropList& List() const noexcept { return *Items; }

 private:
  void PlaceFirst() override;  // at the right, hidden
  void Apply(CQORPProp& item);
  bool HasBook() const;

  CQORPPropList* Items = nullptr;  // a child window
  PropertyRequest Request;
  wxWeakRef<CQORPDockingControlBar> Book;  // of the grid
  PluginLink* Plugin = nullptr;
};
