// CQORPButton: a push button that does one thing. Used on the calling thread of the windows only.
#pragma once

#include <wx/button.h>

#include <functional>
#include <string>

#include "toolkit/toolkit_export.h"

class TOOLKIT_EXPORT CQORPButton : public wxButton {
 public:
  // & stands before the letter that presses it.
  CQORPButton(wxWindow* parent, int id, const std::wstring& caption, std::function<void()> onClick);
};
