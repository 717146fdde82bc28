// A context menu made from a table: texts, command ids and nesting. Commands and updates go to the owner as menu events
// with those ids; an update may disable an entry or change its text.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "toolkit/system/toolkit_export.h"

class wxPoint;
class wxWindow;

struct CQORPMenuItem {
  enum class Kind : unsigned char { Command, Separator, Submenu };
  Kind What;
  int Level;  // 1 stands within the submenu opened above it
  int Id = 0;
  const wchar_t* Text = L"";
};

// At a point of the screen, until the user has chosen or left it.
TOOLKIT_EXPORT void ShowContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items, const wxPoint& point);

// As if the user had chosen the entry under these texts; false where there is none or it is not enabled.
TOOLKIT_EXPORT bool ChooseFromContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items,
                                          const std::vector<std::wstring>& texts);
