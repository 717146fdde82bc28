// The text form of the settings tree by its rules, one element after the other, at any cost: ParseNode must agree with
// it. Shares no code with ParseNode.
#pragma once

#include <string>

#include "grid_base/settings/settings_tree.h"

bool SlowParse(CVELDPXMLNode& node, std::wstring text);

// The tree in one line, name(child,child) or name=value, to compare whole trees.
std::wstring ShapeOf(const CVELDPXMLNode& node);
