#include "benchmarks/window_loop.h"

#include <wx/app.h>
#include <wx/evtloop.h>

namespace {

constexpr int kWaitMs = 5;

}  // namespace

bool StartWindows() {
  static const bool started = [] {
    wxApp::SetInstance(new wxApp);
    static char name[] = "tradebook_bench";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    if (!wxEntryStart(count, arguments)) return false;
    wxTheApp->SetExitOnFrameDelete(false);
    wxTheApp->CallOnInit();
    static wxGUIEventLoop loop;
    wxEventLoopBase::SetActive(&loop);
    return true;
  }();
  return started;
}

void ServeWindows() {
  wxEventLoopBase& loop = *wxEventLoopBase::GetActive();
  loop.DispatchTimeout(kWaitMs);
  wxTheApp->ProcessPendingEvents();
  loop.ProcessIdle();
}
