#include "terminal/windows/play_in_windows.h"

#include <ostream>

#include "platform/console.h"
#include "terminal/windows/failure_box.h"
#include "terminal/windows/window_session.h"
#include "terminal/windows/wx_run.h"

namespace {

void Play(WxRun& wx, const RunFiles& files, const Options& options, CBadLines& badLines, std::ostream& out) {
  CWindowSession session(files, options, badLines);
  session.Open();
  wx.Loop();
  out << SummaryText(session.Summary());
}

}  // namespace

void PlayInWindows(const RunFiles& files, const Options& options, CBadLines& badLines, std::ostream& out) {
  const bool isUnseen = CloseOwnConsole();
  WxRun wx;
  try {
    Play(wx, files, options, badLines, out);
  } catch (const std::exception& failure) {
    if (isUnseen) ShowFailure(nullptr, failure.what());
    throw;
  }
}
