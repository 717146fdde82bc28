// CQORPPopupWindow: a small window in the lower right corner of the screen that says one thing, takes no focus and goes
// after a while or at a click. It owns itself.
#pragma once

#include <wx/frame.h>
#include <wx/timer.h>
#include <wx/window.h>

#include <string>

#include "toolkit/system/toolkit_export.h"

// How a popup looks and goes.
struct CQORPPopupWndParams {
  int AnimationSpeedMs = 30;  // between two steps of its coming
  int Transparency = 200;     // in the end, of 255, where the display can
  int AnimationType = 1;      // 1: it comes up out of nothing; any other: at once
  bool SmallCaption = false;
  int AutoCloseMs = 3000;
};

class TOOLKIT_EXPORT CQORPPopupWindow : public wxFrame {
 public:
  CQORPPopupWindow(wxWindow* parent, const std::wstring& caption, const std::wstring& text,
                   const CQORPPopupWndParams& params);
  // Shows it over the corner of the parent's screen, above popups that are up, without taking the focus.
  void ShowInCorner();

 private:
  void AddLine(const std::wstring& text, bool isCaption);
  void Appear();

  CQORPPopupWndParams Params;
  int Opacity = 0;
  wxTimer AppearTimer;
  wxTimer CloseTimer;
};

// Shows the text. Nothing without a display.
TOOLKIT_EXPORT void ShowCQORPPopupWindow(wxWindow* parent, const std::wstring& caption, const std::wstring& text,
                                         const CQORPPopupWndParams& params = {});

// CQORPProgressOverlay: shows how far a long piece of work is that holds up all windows, at the lower edge of one. It
// paints at once and serves no event, so that nothing else happens meanwhile; the window paints itself anew in the end.
class TOOLKIT_EXPORT CQORPProgressOverlay {
 public:
  // The window must be shown and outlive this.
  explicit CQORPProgressOverlay(wxWindow& window) : Window(window) {}
  ~CQORPProgressOverlay();
  CQORPProgressOverlay(const CQORPProgressOverlay&) = delete;
  CQORPProgressOverlay& operator=(const CQORPProgressOverlay&) = delete;

  // Nothing is painted where the percentage stays.
  void ShowProgress(const std::wstring& text, int percent);

 private:
  wxWindow& Window;
  int Shown = -1;
};
