// The terminal's run from its command line to its exit code. Only main calls it, on the main thread.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

// Writes results to out, errors and bad lines to errors.
int RunTerminal(const std::vector<std::filesystem::path>& arguments, std::ostream& out, std::ostream& errors);
