// The grid's menu, resource 30001: texts, command ids and nesting.
#pragma once

#include "toolkit/dialogs/context_menu.h"

inline constexpr CQORPMenuItem kGridMenu[] = {
    {CQORPMenuItem::Kind::Command, 0, 30015, L"Exchange Trade Format"},
    {CQORPMenuItem::Kind::Submenu, 0, 0, L"Column Header"},
    {CQORPMenuItem::Kind::Command, 1, 30017, L"Field Choose"},
    {CQORPMenuItem::Kind::Command, 1, 30018, L"Show All"},
    {CQORPMenuItem::Kind::Command, 1, 30019, L"Remove All"},
    {CQORPMenuItem::Kind::Separator, 1},
    {CQORPMenuItem::Kind::Command, 1, 30016, L"Remove Sort"},
    {CQORPMenuItem::Kind::Command, 1, 30020, L"Size To Fit"},
    {CQORPMenuItem::Kind::Command, 1, 30022, L"Save Column Profile"},
    {CQORPMenuItem::Kind::Command, 1, 30021, L"Reset"},
    {CQORPMenuItem::Kind::Submenu, 0, 0, L"Export CSV"},
    {CQORPMenuItem::Kind::Command, 1, 30010, L"All Columns"},
    {CQORPMenuItem::Kind::Command, 1, 30011, L"Visible Columns"},
    {CQORPMenuItem::Kind::Command, 1, 30013, L"Selected Columns"},
    {CQORPMenuItem::Kind::Command, 1, 30012, L"Manual Export"},
    {CQORPMenuItem::Kind::Separator, 0},
    {CQORPMenuItem::Kind::Command, 0, 57634, L"&Copy"},
    {CQORPMenuItem::Kind::Command, 0, 30003, L"Copy as &HTML"},
    {CQORPMenuItem::Kind::Command, 0, 30004, L"Select A&ll"},
    {CQORPMenuItem::Kind::Separator, 0},
    {CQORPMenuItem::Kind::Command, 0, 30023, L"Show Filter"},
    {CQORPMenuItem::Kind::Command, 0, 30024, L"Reset Filter"},
    {CQORPMenuItem::Kind::Command, 0, 30008, L"Property"},
};
