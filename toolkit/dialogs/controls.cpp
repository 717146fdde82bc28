#include "toolkit/dialogs/controls.h"

#include <wx/control.h>
#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include <algorithm>
#include <utility>

#include "toolkit/system/native_windows.h"

CQORPButton::CQORPButton(wxWindow* parent, int id, const std::wstring& caption, std::function<void()> onClick)
    : wxButton(parent, id, caption) {
  Bind(wxEVT_BUTTON, [click = std::move(onClick)](wxCommandEvent&) { click(); });
}

CQORPStatic::CQORPStatic(wxWindow* parent, int id, const std::wstring& text, const wxRect& rect) : Text(text) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  wxWindow::Create(parent, id, rect.GetPosition(), rect.GetSize(), wxBORDER_NONE);
  wxWindow::SetFont(parent->GetFont());
  SetAccessibleName(*this, Text);
  Bind(wxEVT_PAINT, &CQORPStatic::OnPaint, this);
}

void CQORPStatic::SetWindowText(const std::wstring& text) {
  if (text == Text) return;
  Text = text;
  SetAccessibleName(*this, Text);
  Refresh();
}

void CQORPStatic::SetTextColor(std::optional<ColorRef> color) {
  if (color == Color) return;
  Color = color;
  Refresh();
}

bool CQORPStatic::SetFont(const wxFont& font) {
  const bool changed = wxWindow::SetFont(font);
  if (changed) Refresh();
  return changed;
}

void CQORPStatic::ShowWhole(bool fits) {
  if (fits) {
    UnsetToolTip();
  } else if (GetToolTipText() != Text) {
    SetToolTip(Text);
  }
}

void CQORPStatic::OnPaint(wxPaintEvent& /*event*/) {
  ++PaintCount;
  wxAutoBufferedPaintDC dc(this);
  const wxColour background = GetParent()->GetBackgroundColour();
  dc.SetBackground(wxBrush(background));
  dc.Clear();
  dc.SetFont(GetFont());
  dc.SetTextForeground(Color ? wxColour(ReadableText(*Color, background.GetRGB()))
                             : wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT));
  const wxSize size = GetClientSize();
  const wxString shown = wxControl::Ellipsize(Text, dc, wxELLIPSIZE_END, size.x, wxELLIPSIZE_FLAGS_NONE);
  dc.DrawText(shown, 0, (size.y - dc.GetTextExtent(shown).y) / 2);
  if (!ToolTipLeft) ShowWhole(shown == Text);
}

namespace {

unsigned Number(int index) {
  return static_cast<unsigned>(index);
}

}  // namespace

// A click on a check box alone does not select its item everywhere, and the selected one is what the owner looks at.
CQORPCheckListBox::CQORPCheckListBox(wxWindow* parent, int id, const std::wstring& name) : wxCheckListBox(parent, id) {
  SetListName(*this, name);
  Bind(wxEVT_CHECKLISTBOX, [this](wxCommandEvent& event) {
    SetCurSel(event.GetInt());
    if (OnCheckChange) OnCheckChange();
  });
  Bind(wxEVT_CHAR_HOOK, &CQORPCheckListBox::OnKey, this);
}

// wxGTK 3.2: Space does nothing before the first click.
void CQORPCheckListBox::OnKey(wxKeyEvent& event) {
  if (event.GetKeyCode() != WXK_SPACE || event.HasAnyModifiers() || !IsItem(GetSelection())) return event.Skip();
  SetCheck(GetSelection(), !GetCheck(GetSelection()));
  if (OnCheckChange) OnCheckChange();
}

std::wstring CQORPCheckListBox::GetItemText(int index) const {
  return IsItem(index) ? GetString(Number(index)).ToStdWstring() : std::wstring();
}

bool CQORPCheckListBox::GetCheck(int index) const {
  return IsItem(index) && IsChecked(Number(index));
}

void CQORPCheckListBox::SetCheck(int index, bool checked) {
  if (IsItem(index)) Check(Number(index), checked);
}

void CQORPCheckListBox::DeleteItem(int index) {
  if (IsItem(index)) Delete(Number(index));
}

void CQORPCheckListBox::InsertItem(int index, const std::wstring& text) {
  const int selected = GetSelection();
  const int at = std::clamp(index, 0, GetItemCount());
  Insert(text, Number(at));
  if (selected >= at) SetSelection(selected + 1);
}

void CQORPCheckListBox::SetCurSel(int index) {
  SetSelection(IsItem(index) ? index : wxNOT_FOUND);
  if (!IsItem(index)) return;
  MoveListCursor(*this, index);
  EnsureVisible(index);
}
