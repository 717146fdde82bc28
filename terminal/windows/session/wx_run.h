// WxRun: wxWidgets from its start to its end, and the terminal with its windows in between. One at a time.
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
  // Destroys closed windows that wait for an idle moment.
  static void DropClosedWindows();
};

// PlayInWindowsFunction of program.h. Throws TerminalError with ExitCode::Display if there is no display.
void PlayInWindows(const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out);
