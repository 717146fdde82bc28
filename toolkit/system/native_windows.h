// What the system's own list boxes need beyond wxWidgets.
#pragma once

#include <wx/dataobj.h>
#include <wx/listbox.h>
#include <wx/window.h>

#include <memory>
#include <string>

// From where the keys go on: selecting an item does not move this everywhere.
void MoveListCursor(wxListBox& list, int item);

// The name under which a screen reader finds the list.
void SetListName(wxListBox& list, const std::wstring& name);

// The name under which a screen reader finds a window that paints its own text.
void SetAccessibleName(wxWindow& window, const std::wstring& name);

// What of the clipboard differs from system to system.

// HTML in UTF-8 as the programs of this system expect it on the clipboard.
std::unique_ptr<wxDataObjectSimple> HtmlForClipboard(const std::string& html);

// What was just put onto the clipboard stays there when the program ends.
void KeepClipboardAfterEnd();
