// A context menu made from a table of texts, command ids and levels. Commands and updates are menu events of the owner
// with those ids; an update may disable an item or change its text.
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
  int Level;  // 1 is in the last submenu before it
  int Id = 0;
  const wchar_t* Text = L"";
};

// At a point of the screen; returns after the user has chosen or left it.
TOOLKIT_EXPORT void ShowContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items, const wxPoint& point);

// As if the user had chosen the item by these texts, from the outermost menu down; false if there is none or it is
// disabled.
TOOLKIT_EXPORT bool ChooseFromContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items,
                                          const std::vector<std::wstring>& texts);
