// CQORPButton: a push button that does one thing.
#pragma once

#include <wx/button.h>
#include <wx/window.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "toolkit/model/cell_colors.h"
#include "toolkit/system/toolkit_export.h"

class TOOLKIT_EXPORT CQORPButton : public wxButton {
 public:
  // & stands before the letter that presses it.
  CQORPButton(wxWindow* parent, int id, const std::wstring& caption, std::function<void()> onClick);
};

// CQORPStatic: a line of text in a colour of its own, painted without flicker and only when it changes. Text that is
// too long ends in dots; a tool tip then shows all of it.
class TOOLKIT_EXPORT CQORPStatic : public wxWindow {
 public:
  CQORPStatic(wxWindow* parent, int id, const std::wstring& text, const wxRect& rect);
  void SetWindowText(const std::wstring& text);
  const std::wstring& GetWindowText() const noexcept { return Text; }
  void SetTextColor(std::optional<ColorRef> color);  // empty: the theme's
  std::optional<ColorRef> GetTextColor() const noexcept { return Color; }
  bool SetFont(const wxFont& font) override;
  // The tool tip is the owner's from now on: none appears for a text that is too long.
  void LeaveToolTip() noexcept { ToolTipLeft = true; }
  bool AcceptsFocus() const override { return false; }
  // How often it was painted, for tests of what repaints.
  int GetPaintCount() const noexcept { return PaintCount; }

 private:
  void OnPaint(wxPaintEvent& event);
  void ShowWhole(bool fits);

  std::wstring Text;
  std::optional<ColorRef> Color;
  int PaintCount = 0;
  bool ToolTipLeft = false;
};
