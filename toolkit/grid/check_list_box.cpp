#include "toolkit/grid/check_list_box.h"

#include <algorithm>

#include "toolkit/system/native_windows.h"

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
