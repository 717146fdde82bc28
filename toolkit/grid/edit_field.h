// What the edit fields of a grid share: the filter fields and the one of the find bar.
#pragma once

#include <wx/event.h>

// The field handles the event; its parents do not get it.
void KeepInField(wxEvent& event);
// Other keys with Ctrl are commands of the program.
bool IsForField(const wxKeyEvent& event);
// Alt belongs to the menus, function keys to the program.
bool IsForProgram(const wxKeyEvent& event);
