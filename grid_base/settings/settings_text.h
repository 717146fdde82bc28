// The settings tree as text and as the bytes of a file, a format without attributes, comments and escapes:
//
//   branch := "<" name ">" LF element* "</" name ">" LF     a node with children, and a root
//   leaf   := "<" name ">" quote value quote "</" name ">" LF
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "grid_base/settings/settings_tree.h"

// The lines of the node and its descendants.
std::wstring SerializeNode(const CVELDPXMLNode& node);

// Reads the first element of a text without line ends into the node: its name, value and children are replaced. False
// at a fault; what comes before it stays. Time and memory are linear, the stack is O(1).
bool ParseNode(CVELDPXMLNode& node, std::wstring_view text);

// The text of the tree in the system code page, with CR LF line ends on every platform.
std::string SettingsFileBytes(const CVELDPXMLNode& root);

// The text of a file for ParseNode: its lines, which end with LF or CR LF, joined. Nothing if the file cannot be read
// to its end.
std::optional<std::wstring> JoinedLines(std::istream& file);
