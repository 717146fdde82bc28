// What the system's own list boxes need beyond wxWidgets. Used on the calling thread of the windows only.
#pragma once

#include <wx/listbox.h>

#include <string>

// From where the keys go on: selecting an item does not move this everywhere.
void MoveListCursor(wxListBox& list, int item);

// The name under which a screen reader finds the list.
void SetListName(wxListBox& list, const std::wstring& name);
