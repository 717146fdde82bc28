// The items of a check list as one text. A + follows a checked item, brackets enclose the selected one.
#pragma once

#include "toolkit/model/dialog_parts.h"

inline std::wstring TextOf(const CheckList& list) {
  std::wstring text;
  for (int i = 0; i < list.GetItemCount(); ++i) {
    const std::wstring item = list.GetItemText(i) + (list.GetCheck(i) ? L"+" : L"");
    text += i == list.GetCurSel() ? L"[" + item + L"]" : item;
  }
  return text;
}
