// The grid's menu, resource 30001: texts, command ids and nesting. Not what the commands do: trade_book_grid.h. A
// table; any thread.
#pragma once

struct GridMenuItem {
  enum class Kind : unsigned char { Command, Separator, Submenu };
  Kind What;
  int Level;  // 1 stands within the submenu opened above it
  int Id = 0;
  const wchar_t* Text = L"";
};

inline constexpr GridMenuItem kGridMenu[] = {
    {GridMenuItem::Kind::Command, 0, 30015, L"Exchange Trade Format"},
    {GridMenuItem::Kind::Submenu, 0, 0, L"Column Header"},
    {GridMenuItem::Kind::Command, 1, 30017, L"Field Choose"},
    {GridMenuItem::Kind::Command, 1, 30018, L"Show All"},
    {GridMenuItem::Kind::Command, 1, 30019, L"Remove All"},
    {GridMenuItem::Kind::Separator, 1},
    {GridMenuItem::Kind::Command, 1, 30016, L"Remove Sort"},
    {GridMenuItem::Kind::Command, 1, 30020, L"Size To Fit"},
    {GridMenuItem::Kind::Command, 1, 30022, L"Save Column Profile"},
    {GridMenuItem::Kind::Command, 1, 30021, L"Reset"},
    {GridMenuItem::Kind::Submenu, 0, 0, L"Export CSV"},
    {GridMenuItem::Kind::Command, 1, 30010, L"All Columns"},
    {GridMenuItem::Kind::Command, 1, 30011, L"Visible Columns"},
    {GridMenuItem::Kind::Command, 1, 30013, L"Selected Columns"},
    {GridMenuItem::Kind::Command, 1, 30012, L"Manual Export"},
    {GridMenuItem::Kind::Separator, 0},
    {GridMenuItem::Kind::Command, 0, 57634, L"&Copy"},
    {GridMenuItem::Kind::Command, 0, 30003, L"Copy as &HTML"},
    {GridMenuItem::Kind::Command, 0, 30004, L"Select A&ll"},
    {GridMenuItem::Kind::Separator, 0},
    {GridMenuItem::Kind::Command, 0, 30023, L"Show Filter"},
    {GridMenuItem::Kind::Command, 0, 30024, L"Reset Filter"},
    {GridMenuItem::Kind::Command, 0, 30008, L"Property"},
};
