#include "toolkit/start/toolkit_start.h"

#include <wx/app.h>
#include <wx/log.h>
#include <wx/thread.h>
#include <wx/toplevel.h>

#include "foundations/error_report.h"
#include "toolkit/system/make_child.h"
#include "toolkit/system/native_windows.h"

namespace {

// The app of a process that has its own main loop and decides itself when it ends.
class EmbeddedApp : public wxApp {
 public:
  bool OnInit() override {
    SetExitOnFrameDelete(false);
    return true;
  }
  // Now, as no idle time will come. Each window takes its children with it.
  void DestroyWindows() {
    const wxWindowList windows = wxTopLevelWindows;
    for (wxWindow* window : windows)
      if (window->GetParent() == nullptr) window->Destroy();
    ProcessPendingEvents();
    DeletePendingObjects();
  }
};

EmbeddedApp* startedApp = nullptr;  // wxWidgets deletes it

void ReportAssertion(const wxString& file, int line, const wxString& function, const wxString& condition,
                     const wxString& message) {
  const wxString text = "wxWidgets: " + condition + " (" + file + ") " + message;
  CQORLog::ReportFailure(text.ToStdString(wxConvUTF8), 0, function.ToStdString(wxConvUTF8),
                         static_cast<unsigned>(line));
}

EmbeddedApp* StartHere() {
  const wxLogNull silence;  // wxWidgets logs a missing display
  EmbeddedApp* app = &MakeChild<EmbeddedApp>();
  wxApp::SetInstance(app);
  return StartEmbedding() && app->CallOnInit() ? app : nullptr;
}

}  // namespace

bool StartToolkit() {
  if (wxTheApp != nullptr) return wxTheApp->IsGUI() && wxIsMainThread();
  startedApp = StartHere();
  if (startedApp != nullptr) ReportToolkitAssertions();
  return startedApp != nullptr;
}

void StopToolkit() {
  if (startedApp == nullptr) return;
  startedApp->DestroyWindows();
  startedApp->OnExit();
  startedApp = nullptr;
  StopEmbedding();
}

void ReportToolkitAssertions() {
  wxSetAssertHandler(ReportAssertion);
}
