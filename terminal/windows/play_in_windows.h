// The terminal with its windows, from the first to the last. Not what they show. The main thread only.
#pragma once

#include <iosfwd>

#include "terminal/bad_lines.h"
#include "terminal/options.h"
#include "terminal/run_files.h"

// As PlayInWindowsFunction of program.h says. Throws TerminalError with ExitCode::Display where there is no display.
void PlayInWindows(const RunFiles& files, const Options& options, CBadLines& badLines, std::ostream& out);
