// Paths and keys of the settings tree. Pure; any thread.
#pragma once

#include <string>
#include <vector>

#include "grid_base/settings_node.h"

// A name as it stands in the tree: without its blanks, and without what would end or bend its tag in a file: angle
// brackets, line ends and a stroke in front. Names come from titles too, and so from the terminal's data.
std::wstring StoredName(std::wstring name);

// The names of a path, between its backslashes; two in a row stand for an empty name, a last one for nothing. An empty
// path has no names.
std::vector<std::wstring> PathParts(const std::wstring& path);

// The node that the path leads to from the root; null where a part of it is missing.
CVELDPXMLNode* FindPath(CVELDPXMLNode& root, const std::wstring& path);
