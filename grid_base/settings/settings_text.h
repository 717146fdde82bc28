// The text form of the settings tree, a small format of its own with no attributes, comments or escapes:
//
//   branch := "<" name ">" LF element* "</" name ">" LF     a node with children, and a root
//   leaf   := "<" name ">" quote value quote "</" name ">" LF
//
// Not the file: CVELDPXMLSettings reads and writes that. Pure; any thread.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "grid_base/settings/settings_tree.h"

// The lines of the node and all below it.
std::wstring SerializeNode(const CVELDPXMLNode& node);

// Reads the first element of a text whose lines have been joined, into the node: its name, value and children are
// replaced. What was read before a fault stays; false then. Time and memory grow with the text, the stack does not.
bool ParseNode(CVELDPXMLNode& node, std::wstring_view text);

// The settings tree as the bytes of a file: its text form in the system code page, with CR LF line ends on every
// platform.
std::string SettingsFileBytes(const CVELDPXMLNode& root);

// The text of a file for ParseNode: its lines, which end with LF or CR LF, joined with nothing between them. Nothing
// when the file cannot be read to its end.
std::optional<std::wstring> JoinedLines(std::istream& file);
