// Functions of the system that wxWidgets lacks: list boxes, names for screen readers, clipboard, and a start within the
// loop of another program.
#pragma once

#include <wx/dataobj.h>
#include <wx/listbox.h>
#include <wx/window.h>

#include <memory>
#include <string>

// Sets the item from which arrow keys move. Selecting an item does not do this on every system.
void MoveListCursor(wxListBox& list, int item);

// Sets the name that screen readers say for the list.
void SetListName(wxListBox& list, const std::wstring& name);

// The same for a window that paints its own text, and for an edit, whose text is its value.
void SetAccessibleName(wxWindow& window, const std::wstring& name);

// Sets what screen readers say after that name. Of the window with the focus they say each new description at once.
void SetAccessibleDescription(wxWindow& window, const std::wstring& description);

// Clipboard data of HTML in UTF-8, as the programs of this system expect it.
std::unique_ptr<wxDataObjectSimple> HtmlForClipboard(const std::string& html);

// Keeps the present clipboard data after the end of the program.
void KeepClipboardAfterEnd();

// Starts wxWidgets with the app that was set before, and connects its events with the loop of the process. False,
// without any effect, if there is no display.
bool StartEmbedding();
// Ends wxWidgets and deletes its app.
void StopEmbedding();
