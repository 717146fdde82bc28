// The terminal's run from its command line to its exit code. Only main calls it, on the main thread.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

#include "terminal/bad_lines.h"
#include "terminal/options.h"
#include "terminal/run_files.h"

inline constexpr const char* kTerminalVersion = TERMINAL_VERSION;

// Plays the day in windows until the user closes them; bad lines go to the object, the summary to out. Throws
// TerminalError.
using PlayInWindowsFunction = void (*)(const RunFiles& files, const Options& options, CBadLines& badLines,
                                       std::ostream& out);

// Writes results to out, errors and bad lines to errors. Windows are used only where the command line asks for them.
int RunTerminal(const std::vector<std::filesystem::path>& arguments, PlayInWindowsFunction playInWindows,
                std::ostream& out, std::ostream& errors);
