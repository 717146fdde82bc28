// The text form of the settings tree by its rules as they are told, one element after the other, without regard to cost
// or stack: what ParseNode must agree with, for tests and fuzzing. Shares no code with it.
#pragma once

#include <string>

#include "grid_base/settings/settings_tree.h"

bool SlowParse(CVELDPXMLNode& node, std::wstring text);

// The tree in one line, name(child,child) or name=value, to compare whole trees.
std::wstring ShapeOf(const CVELDPXMLNode& node);
