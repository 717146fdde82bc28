// PropertyPane: the bar with the properties of a book; the plug-in fills it and takes over changes.
#pragma once

#include <wx/panel.h>
#include <wx/weakref.h>

#include "terminal/link/plugin_link.h"
#include "terminal/link/plugin_messages.h"
#include "terminal/windows/frame/terminal_bar.h"
#include "toolkit/properties/property_list.h"

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
