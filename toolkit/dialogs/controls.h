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
#include "toolkit/model/dialog_parts.h"
#include "toolkit/system/toolkit_export.h"

// A push button with one action.
class TOOLKIT_EXPORT CQORPButton : public wxButton {
 public:
  // An & marks the letter that presses it.
  CQORPButton(wxWindow* parent, int id, const std::wstring& caption, std::function<void()> onClick);
};

// A line of text with its own colour, painted without flicker and only if it changes. A text that is too long ends in
// dots and has a tool tip with the whole text.
class TOOLKIT_EXPORT CQORPStatic : public wxWindow {
 public:
  CQORPStatic(wxWindow* parent, int id, const std::wstring& text, const wxRect& rect);
  void SetWindowText(const std::wstring& text);
  const std::wstring& GetWindowText() const noexcept { return Text; }
  void SetTextColor(std::optional<ColorRef> color);  // empty: that of the theme
  std::optional<ColorRef> GetTextColor() const noexcept { return Color; }
  bool SetFont(const wxFont& font) override;
  // Leaves the tool tip to the owner, also for a text that is too long.
  void LeaveToolTip() noexcept { ToolTipLeft = true; }
  bool AcceptsFocus() const override { return false; }
  // For tests: how often it was painted.
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
  // Screen readers say the name.
  CQORPCheckListBox(wxWindow* parent, int id, const std::wstring& name);

  int GetItemCount() const override { return static_cast<int>(GetCount()); }
  std::wstring GetItemText(int index) const override;
  bool GetCheck(int index) const override;
  void SetCheck(int index, bool checked) override;
  void DeleteItem(int index) override;
  void InsertItem(int index, const std::wstring& text) override;
  int GetCurSel() const override { return GetSelection(); }
  void SetCurSel(int index) override;

  // The user checked or unchecked an item, which is selected by then.
  std::function<void()> OnCheckChange;

 private:
  void OnKey(wxKeyEvent& event);
  bool IsItem(int index) const { return index >= 0 && index < GetItemCount(); }
};
