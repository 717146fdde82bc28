// The controls that dialogs are made of: push button, static text, check list box.
#pragma once

#include <wx/button.h>
#include <wx/checklst.h>
#include <wx/window.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "toolkit/model/cell_colors.h"
#include "toolkit/model/check_list.h"
#include "toolkit/system/toolkit_export.h"

// A push button with one action.
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

// A list of texts with check boxes, of which one item is selected.
class TOOLKIT_EXPORT CQORPCheckListBox : public wxCheckListBox, public CheckList {
 public:
  // The name is what a screen reader says of the list.
  CQORPCheckListBox(wxWindow* parent, int id, const std::wstring& name);

  int GetItemCount() const override { return static_cast<int>(GetCount()); }
  std::wstring GetItemText(int index) const override;
  bool GetCheck(int index) const override;
  void SetCheck(int index, bool checked) override;
  void DeleteItem(int index) override;
  void InsertItem(int index, const std::wstring& text) override;
  int GetCurSel() const override { return GetSelection(); }
  void SetCurSel(int index) override;

  // The user checked or cleared an item, which is the selected one by then.
  std::function<void()> OnCheckChange;

 private:
  void OnKey(wxKeyEvent& event);
  bool IsItem(int index) const { return index >= 0 && index < GetItemCount(); }
};
