// What a property list edits an item with: a property of wxWidgets for each kind of value. Not the list. Used on the
// calling thread of the windows only.
#pragma once

#include <wx/propgrid/propgrid.h>

#include <memory>

#include "toolkit/property.h"

// A property that shows the item, without those below it. The item outlives it.
std::unique_ptr<wxPGProperty> MakeEditor(CQORPProp& item);
// The item that it was made for; of a part of a value, as the size of a font, that of the whole. Null for none.
CQORPProp* ItemOf(const wxPGProperty* editor);
// Puts the value that the user chose into the item, and gives it; null where it is the one that the item has.
CQORPProp* TakeChange(const wxPGProperty* editor);
