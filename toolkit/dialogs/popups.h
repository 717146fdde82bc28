// What opens over the windows for a while: context menu, message in the corner of the screen, progress of long work.
#pragma once

#include <wx/frame.h>
#include <wx/timer.h>
#include <wx/window.h>

#include <span>
#include <string>
#include <vector>

#include "toolkit/system/toolkit_export.h"

// An item of a context menu, which is made from a table of texts, command ids and levels. Commands and updates are menu
// events of the owner with those ids; an update may disable an item or change its text.
struct CQORPMenuItem {
  enum class Kind : unsigned char { Command, Separator, Submenu };
  Kind What;
  int Level;  // 1 is in the last submenu before it
  int Id = 0;
  const wchar_t* Text = L"";
};

// At a point of the screen; returns after the user has chosen or left it.
TOOLKIT_EXPORT void ShowContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items, const wxPoint& point);

// As if the user had chosen the item by these texts, from the outermost menu down; false if there is none or it is
// disabled.
TOOLKIT_EXPORT bool ChooseFromContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items,
                                          const std::vector<std::wstring>& texts);

// Look and duration of a popup.
struct CQORPPopupWndParams {
  int AnimationSpeedMs = 30;  // between two steps
  int Transparency = 200;     // the final opacity, of 255, if the display supports it
  int AnimationType = 1;      // 1: fades in; otherwise appears at once
  bool SmallCaption = false;
  int AutoCloseMs = 3000;
};

// A small window with a text in the lower right corner of the screen. It takes no focus, closes after a while or at a
// click, and destroys itself.
class TOOLKIT_EXPORT CQORPPopupWindow : public wxFrame {
 public:
  CQORPPopupWindow(wxWindow* parent, const std::wstring& caption, const std::wstring& text,
                   const CQORPPopupWndParams& params);
  // In the corner of the parent's screen, above the popups that are already there.
  void ShowInCorner();

 private:
  void AddLine(const std::wstring& text, bool isCaption);
  void Appear();

  CQORPPopupWndParams Params;
  int Opacity = 0;
  wxTimer AppearTimer;
  wxTimer CloseTimer;
};

// A no-op without a display.
TOOLKIT_EXPORT void ShowCQORPPopupWindow(wxWindow* parent, const std::wstring& caption, const std::wstring& text,
                                         const CQORPPopupWndParams& params = {});

// CQORPProgressOverlay: shows the progress of long work that blocks all windows, at the lower edge of one. It paints at
// once and processes no events; its destructor repaints the window.
class TOOLKIT_EXPORT CQORPProgressOverlay {
 public:
  // The window must be shown and outlive this object.
  explicit CQORPProgressOverlay(wxWindow& window) : Window(window) {}
  ~CQORPProgressOverlay();
  CQORPProgressOverlay(const CQORPProgressOverlay&) = delete;
  CQORPProgressOverlay& operator=(const CQORPProgressOverlay&) = delete;

  // Paints only if the percentage changes.
  void ShowProgress(const std::wstring& text, int percent);

 private:
  wxWindow& Window;
  int Shown = -1;
};
