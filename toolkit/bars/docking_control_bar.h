// CQORPDockingControlBar: a bar that is docked, floats in a mini frame, or is a tab of the frame. The derived class
// adds the content. The frame owns the bar; closing only hides it.
#pragma once

#include <wx/panel.h>

#include <cstdint>
#include <memory>
#include <string>

#include "grid_base/settings/registry.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/model/bar_place.h"
#include "toolkit/system/toolkit_export.h"

// The page of a tabbed bar, with its own title.
class TOOLKIT_EXPORT CQORPMDIChildWnd : public wxPanel {
 public:
  explicit CQORPMDIChildWnd(wxWindow* parent);
  ~CQORPMDIChildWnd() override;
  void SetTitle(const std::wstring& title);
  const std::wstring& GetTitle() const noexcept { return Title; }
  // Its bar; null for none.
  CQORPDockingControlBar* GetBar() const noexcept { return Bar; }
  // Passes the focus to its bar.
  void SetFocus() override;

 private:
  friend class CQORPDockingManager;
  CQORPDockingControlBar* Bar = nullptr;
  std::wstring Title;
};

class TOOLKIT_EXPORT CQORPDockingControlBar : public wxPanel {
 public:
  CQORPDockingControlBar();
  // Removes the bar from the frame's layout, so a bar may simply be deleted or destroyed.
  ~CQORPDockingControlBar() override;

  // Makes a hidden bar that floats in that rectangle of the screen when it is shown. A rectangle without an area is
  // replaced by a default one. False if no window could be made.
  bool CreateBar(CQORPDockingManager& manager, const std::wstring& caption, const wxRect& rect, std::uint32_t id);
  // Whether the bar may be docked; true for a new bar.
  void EnableDocking(bool enabled);

  // Move the bar; a hidden bar stays hidden.
  void FloatControlBar(const wxRect& rect);
  void DockControlBar(DockSide side);
  // With that height, at the left and right that width; in a frame that is too small as yet, once it has grown.
  void DockControlBar(DockSide side, int sizePx);
  void TabControlBar();
  // Hides the bar and forgets its places: as CreateBar leaves it.
  void ForgetPlaces(const wxRect& rect);
  // At its last place; activate raises it and gives it the focus.
  void ShowControlBar(bool show, bool activate = true);
  bool IsBarShown() const;
  bool IsDocked() const;     // and shown
  bool IsFloating() const;   // and shown
  bool IsMDITabbed() const;  // and shown

  // Null unless the bar floats.
  wxFrame* GetParentMiniFrame() const;
  // Null unless the bar is tabbed.
  CQORPMDIChildWnd* GetParentMDIChild() const;
  // The rectangle of the screen in which the bar floats, or would float.
  wxRect GetFloatRect() const;

  // Shown in the caption, the mini frame or the tab.
  void SetBarTitle(const std::wstring& title);
  const std::wstring& GetBarTitle() const noexcept;
  // The caption passed to CreateBar.
  const std::wstring& GetBarName() const noexcept;
  std::uint32_t GetDlgCtrlID() const noexcept;
  // Null before CreateBar, and after the manager is destroyed.
  CQORPDockingManager* GetDockingManager() const noexcept;

  // Place, size and state, stored in the section under "Bar-" and the index; the id is for derived classes. Load shows
  // or hides the bar as it was; false, without any change, if there is no valid state.
  virtual bool LoadState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id);
  virtual bool SaveState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id);

  // Makes the page of the tabbed bar.
  virtual CQORPMDIChildWnd* CreateTabbedFrame(wxWindow* parent);
  // The close button of the caption or the mini frame was pressed. Hides the bar.
  virtual void OnPressCloseButton() { ShowControlBar(false); }
  // The close button of the tab was pressed. Non-zero closes the tab, which hides the bar.
  virtual int OnTabCloseButton() { return 1; }
  // A key before any control gets it; true consumes it. Keys with Alt belong to the menus and are not sent here.
  virtual bool PreTranslateMessage(wxKeyEvent& /*event*/) { return false; }
  // The bar got the focus and may pass it on.
  virtual void OnBarFocus() {}
  // The bar was docked, floated, tabbed or resized.
  virtual void OnBarMoved() {}

  void SetFocus() override;

 private:
  friend class CQORPDockingManager;
  class Impl;
  std::unique_ptr<Impl> Parts;
};

// The entries of the context menu on the caption, mini frame or tab of a bar.
enum class BarCommand { Float, Dock, Tab, Hide };

// True if the bar is already in the state that the command sets.
bool IsBarCommandChecked(const CQORPDockingControlBar& bar, BarCommand command);
// Hide presses the close button: the bar decides what follows, and may destroy itself. Docking uses the side.
void RunBarCommand(CQORPDockingControlBar& bar, BarCommand command, DockSide side);

// Opens the menu at the mouse pointer and runs the chosen command. Docking is disabled if the bar is not dockable.
void ShowBarMenu(CQORPDockingControlBar& bar, wxWindow& over, DockSide side, bool dockable);
