// CQORPPopupWindow: a small window in the lower right corner of the screen that says one thing, takes no focus and goes
// after a while or at a click. It owns itself. Used on the calling thread of the windows only.
#pragma once

#include <wx/frame.h>
#include <wx/timer.h>

#include <string>

#include "toolkit/toolkit_export.h"

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
