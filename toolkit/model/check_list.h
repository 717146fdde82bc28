// CheckList: the interface of a list of texts with check boxes.
#pragma once

#include <string>

class CheckList {
 public:
  virtual ~CheckList() = default;
  virtual int GetItemCount() const = 0;
  // An invalid index gives an empty text and false, and is ignored by the functions that change the list.
  virtual std::wstring GetItemText(int index) const = 0;
  virtual bool GetCheck(int index) const = 0;
  virtual void SetCheck(int index, bool checked) = 0;
  virtual void DeleteItem(int index) = 0;
  // The new item is unchecked. An index after the end appends. The selection stays with its item.
  virtual void InsertItem(int index, const std::wstring& text) = 0;
  // The selected item; -1 for none.
  virtual int GetCurSel() const = 0;
  virtual void SetCurSel(int index) = 0;
};
