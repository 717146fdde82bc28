// CQORPDockingControlBar: a bar that can be docked, float in a mini frame, or stand as a tab of the frame. It fills
// itself with whatever the derived class puts in. It belongs to the frame: closing hides it.
#pragma once

#include <wx/panel.h>

#include <cstdint>
#include <memory>
#include <string>

#include "grid_base/settings/registry.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/model/bar_place.h"
#include "toolkit/system/toolkit_export.h"

// The frame that a tabbed bar stands in: a page of the tabs with a title of its own.
class TOOLKIT_EXPORT CQORPMDIChildWnd : public wxPanel {
 public:
  explicit CQORPMDIChildWnd(wxWindow* parent);
  ~CQORPMDIChildWnd() override;
  void SetTitle(const std::wstring& title);
  const std::wstring& GetTitle() const noexcept { return Title; }
  // The bar that it holds; null for none.
  CQORPDockingControlBar* GetBar() const noexcept { return Bar; }
  // The focus goes to the bar that it holds.
  void SetFocus() override;

 private:
  friend class CQORPDockingManager;
  CQORPDockingControlBar* Bar = nullptr;
  std::wstring Title;
};

class TOOLKIT_EXPORT CQORPDockingControlBar : public wxPanel {
 public:
  CQORPDockingControlBar();
  // Takes itself out of the frame's layout: deleting or destroying a bar is enough.
  ~CQORPDockingControlBar() override;

  // Makes the bar hidden, with that rectangle of the screen for when it floats: a new bar floats. A rectangle without
  // an area gives one of the toolkit's own. False when no window could be made.
  bool CreateBar(CQORPDockingManager& manager, const std::wstring& caption, const wxRect& rect, std::uint32_t id);
  // May be docked at the four sides; a new bar may.
  void EnableDocking(bool enabled);

  // Where the bar stands from now on; a hidden bar stays hidden.
  void FloatControlBar(const wxRect& rect);
  void DockControlBar(DockSide side);
  void TabControlBar();
  // Where it was last; activate brings it to the front and gives it the focus.
  void ShowControlBar(bool show, bool activate = true);
  bool IsBarShown() const;
  bool IsDocked() const;     // and shown
  bool IsFloating() const;   // and shown
  bool IsMDITabbed() const;  // and shown

  // Null unless it floats.
  wxFrame* GetParentMiniFrame() const;
  // Null unless it is tabbed.
  CQORPMDIChildWnd* GetParentMDIChild() const;
  // The rectangle of the screen in which it floats, or would.
  wxRect GetFloatRect() const;

  // In the caption, the mini frame or the tab.
  void SetBarTitle(const std::wstring& title);
  const std::wstring& GetBarTitle() const noexcept;
  // The caption that it was made with.
  const std::wstring& GetBarName() const noexcept;
  std::uint32_t GetDlgCtrlID() const noexcept;
  // Null before CreateBar and once the frame is going.
  CQORPDockingManager* GetDockingManager() const noexcept;

  // Place, size and state under the section, by "Bar-" and the index; the id is for derived classes. Load brings them
  // back and shows the bar as it was; false, with the bar as it is, when nothing or nothing sound is stored.
  virtual bool LoadState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id);
  virtual bool SaveState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id);

  // The page that it stands in while tabbed.
  virtual CQORPMDIChildWnd* CreateTabbedFrame(wxWindow* parent);
  // The close button of the caption or the mini frame. The toolkit's own action is to hide the bar.
  virtual void OnPressCloseButton() { ShowControlBar(false); }
  // The close button of the tab: non-zero lets the tab go, which hides the bar.
  virtual int OnTabCloseButton() { return 1; }
  // A key before any control sees it; true swallows it. Keys with Alt are the menus' and do not come here.
  virtual bool PreTranslateMessage(wxKeyEvent& /*event*/) { return false; }
  // The bar was given the focus; it may pass it on.
  virtual void OnBarFocus() {}
  // Docked, floated, tabbed or resized.
  virtual void OnBarMoved() {}

  void SetFocus() override;

 private:
  friend class CQORPDockingManager;
  class Impl;
  std::unique_ptr<Impl> Parts;
};
