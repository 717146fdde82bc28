#include "toolkit/bars/bar_menu.h"

#include <wx/menu.h>

namespace {

struct MenuRow {
  BarCommand Command;
  const wchar_t* Caption;
};
constexpr MenuRow kMenu[] = {
    {BarCommand::Float, L"&Floating"},
    {BarCommand::Dock, L"&Docking"},
    {BarCommand::Tab, L"&Tabbed"},
    {BarCommand::Hide, L"&Hide"},
};
constexpr int kFirstId = 1;

void PressCloseButton(CQORPDockingControlBar& bar) {
  if (!bar.IsMDITabbed()) {
    bar.OnPressCloseButton();
  } else if (bar.OnTabCloseButton() != 0) {
    bar.ShowControlBar(false);
  }
}

}  // namespace

bool IsBarCommandChecked(const CQORPDockingControlBar& bar, BarCommand command) {
  switch (command) {
    case BarCommand::Float:
      return bar.IsFloating();
    case BarCommand::Dock:
      return bar.IsDocked();
    case BarCommand::Tab:
      return bar.IsMDITabbed();
    case BarCommand::Hide:
      return !bar.IsBarShown();
  }
  return false;
}

void RunBarCommand(CQORPDockingControlBar& bar, BarCommand command, DockSide side) {
  switch (command) {
    case BarCommand::Float:
      return bar.FloatControlBar(bar.GetFloatRect());
    case BarCommand::Dock:
      return bar.DockControlBar(side);
    case BarCommand::Tab:
      return bar.TabControlBar();
    case BarCommand::Hide:
      return PressCloseButton(bar);
  }
}

void ShowBarMenu(CQORPDockingControlBar& bar, wxWindow& over, DockSide side, bool dockable) {
  wxMenu menu;
  for (const MenuRow& row : kMenu) {
    const int id = kFirstId + static_cast<int>(row.Command);
    const bool isState = row.Command != BarCommand::Hide;
    menu.Append(id, row.Caption, wxEmptyString, isState ? wxITEM_CHECK : wxITEM_NORMAL);
    if (isState) menu.Check(id, IsBarCommandChecked(bar, row.Command));
    if (row.Command == BarCommand::Dock) menu.Enable(id, dockable);
  }
  const int chosen = over.GetPopupMenuSelectionFromUser(menu);
  for (const MenuRow& row : kMenu)
    if (chosen == kFirstId + static_cast<int>(row.Command) && !IsBarCommandChecked(bar, row.Command))
      return RunBarCommand(bar, row.Command, side);
}
