#include "toolkit/native_list.h"

#include "toolkit/accessible_name.h"

// The cursor goes with the selection.
void MoveListCursor(wxListBox& /*list*/, int /*item*/) {}

void SetListName(wxListBox& list, const std::wstring& name) {
  SetAccessibleName(list, name);
}
