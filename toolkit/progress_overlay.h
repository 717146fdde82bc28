// CQORPProgressOverlay: shows how far a long piece of work is that holds up all windows, at the lower edge of one. It
// paints at once and serves no event, so that nothing else happens meanwhile; the window paints itself anew in the end.
// Used on the calling thread of the windows only.
#pragma once

#include <wx/window.h>

#include <string>

#include "toolkit/toolkit_export.h"

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
