// CheckList: a list of texts with a check box each, as the rules that fill it see it.
#pragma once

#include <string>

class CheckList {
 public:
  virtual ~CheckList() = default;
  virtual int GetItemCount() const = 0;
  // Empty, false and no effect for an index that is none.
  virtual std::wstring GetItemText(int index) const = 0;
  virtual bool GetCheck(int index) const = 0;
  virtual void SetCheck(int index, bool checked) = 0;
  virtual void DeleteItem(int index) = 0;
  // Unchecked. An index behind the last inserts at the end. The selection stays with its item.
  virtual void InsertItem(int index, const std::wstring& text) = 0;
  // The selected item; -1 for none.
  virtual int GetCurSel() const = 0;
  virtual void SetCurSel(int index) = 0;
};
