// CQORPProgressBar: shows how far a long piece of work is that holds up all windows: it paints itself at once, without
// serving an event, so that nothing else happens meanwhile. Used on the calling thread of the windows only.
#pragma once

#include <wx/window.h>

#include <string>

#include "toolkit/toolkit_export.h"

class TOOLKIT_EXPORT CQORPProgressBar : public wxWindow {
 public:
  // Hidden until ShowProgress.
  CQORPProgressBar(wxWindow* parent, const wxRect& rect);

  // Nothing is painted where neither text nor length changes.
  void ShowProgress(const std::wstring& text, int percent);

 private:
  void OnPaint();

  std::wstring Text;
  int Percent = -1;
};
