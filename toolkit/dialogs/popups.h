// CQORPPopupWindow: a small window with a text in the lower right corner of the screen. It takes no focus, closes after
// a while or at a click, and destroys itself.
#pragma once

#include <wx/frame.h>
#include <wx/timer.h>
#include <wx/window.h>

#include <string>

#include "toolkit/system/toolkit_export.h"

// Look and duration of a popup.
struct CQORPPopupWndParams {
  int AnimationSpeedMs = 30;  // between two steps
  int Transparency = 200;     // the final opacity, of 255, if the display supports it
  int AnimationType = 1;      // 1: fades in; otherwise appears at once
  bool SmallCaption = false;
  int AutoCloseMs = 3000;
};

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
