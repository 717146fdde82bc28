// CQORPCheckListBox: the window of a list of texts with check boxes, of which one item is selected.
#pragma once

#include <wx/checklst.h>

#include <functional>
#include <string>

#include "toolkit/model/check_list.h"
#include "toolkit/system/toolkit_export.h"

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
