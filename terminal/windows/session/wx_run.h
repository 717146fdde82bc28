// WxRun: wxWidgets from its start to its end, in a terminal whose main loop it is. The main thread only; one at a time.
#pragma once

#include <iosfwd>

#include "terminal/common/errors.h"
#include "terminal/common/run_files.h"
#include "terminal/program/options.h"

class WxRun {
 public:
  // Throws TerminalError with ExitCode::Display where there is no display.
  WxRun();
  ~WxRun();
  WxRun(const WxRun&) = delete;
  WxRun& operator=(const WxRun&) = delete;

  // Until the last window is closed.
  void Loop();
  // Destroys windows that have been closed and wait for an idle moment to go.
  static void DropClosedWindows();
};

// The terminal with its windows, from the first to the last.

// As PlayInWindowsFunction of program.h says. Throws TerminalError with ExitCode::Display where there is no display.
void PlayInWindows(const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out);
