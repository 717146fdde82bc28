// BarsFrame: the frame that a process without a frame of the toolkit gets for the bars. Closing it presses the close
// button of every bar, and hides it once none is shown. It does not keep a process alive. Used on the calling thread of
// the windows only.
#pragma once

#include "toolkit/frame.h"

class BarsFrame : public CQORPFrame {
 public:
  BarsFrame();
  bool ShouldPreventAppExit() const override { return false; }
  // The frame made so far; null for none.
  static BarsFrame* Existing();

 private:
  void OnClose(wxCloseEvent& event);
};
