// The settings tree as the bytes of a file: its text form in the system code page, with CR LF line ends on every
// platform. Not the choice of a file. Pure; any thread.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "grid_base/settings_node.h"

std::string SettingsFileBytes(const CVELDPXMLNode& root);

// The text of a file for ParseNode: its lines, which end with LF or CR LF, joined with nothing between them. Nothing
// when the file cannot be read to its end.
std::optional<std::wstring> JoinedLines(std::istream& file);
