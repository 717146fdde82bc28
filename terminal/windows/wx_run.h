// WxRun: wxWidgets from its start to its end, in a terminal whose main loop it is. Not the windows. The main thread
// only; one at a time.
#pragma once

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
