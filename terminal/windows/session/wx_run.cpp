#include "terminal/windows/session/wx_run.h"

#include <wx/app.h>
#include <wx/log.h>

#include <memory>
#include <ostream>

#include "platform/modules.h"
#include "terminal/common/errors.h"
#include "terminal/windows/frame/main_frame.h"
#include "terminal/windows/frame/window_system.h"
#include "terminal/windows/session/window_session.h"
#include "toolkit/start/toolkit_start.h"

namespace {

class TerminalApp : public wxApp {
 public:
  // Intentional: wxWidgets does not parse the command line again.
  bool OnInit() override {
    SetAppName(L"terminal");
    SetAppDisplayName(L"Trading Terminal");
    return true;
  }
};

bool StartWx() {
  const wxLogNull silence;  // without a display wxWidgets would say so on its own
  // wxWidgets deletes the app. It gets no command line, as its options are not the terminal's.
  wxApp::SetInstance(std::make_unique<TerminalApp>().release());
  static char name[] = "terminal";
  static char* words[] = {name, nullptr};
  static int count = 1;
  return wxEntryStart(count, words);
}

}  // namespace

WxRun::WxRun() {
  ChooseWindowSystem();
  if (!StartWx())
    throw TerminalError(ExitCode::Display,
                        "there is no display to show windows on: give it one, or start with --headless");
  DropKnownComplaints();
  ReportToolkitAssertions();
  wxTheApp->CallOnInit();
  wxLog::SetActiveTarget(std::make_unique<wxLogStderr>().release());  // wxWidgets deletes it; no boxes by themselves
  wxLog::SetLogLevel(wxLOG_Message);  // what wxWidgets tells its own developers says nothing to the user
}

WxRun::~WxRun() {
  DropClosedWindows();
  wxTheApp->OnExit();
  wxEntryCleanup();
}

void WxRun::Loop() {
  wxTheApp->OnRun();
}

void WxRun::DropClosedWindows() {
  wxTheApp->ProcessPendingEvents();
  wxTheApp->ProcessIdle();
}

namespace {

void Play(WxRun& wx, const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out) {
  WindowSession session(files, options, badLines);
  session.Open();
  wx.Loop();
  out << SummaryText(session.Summary());
}

}  // namespace

void PlayInWindows(const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out) {
  const bool isUnseen = CloseOwnConsole();
  WxRun wx;
  try {
    Play(wx, files, options, badLines, out);
  } catch (const std::exception& failure) {
    if (isUnseen) ShowFailure(nullptr, failure.what());
    throw;
  }
}
