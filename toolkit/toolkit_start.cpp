#include "toolkit/toolkit_start.h"

#include <wx/app.h>
#include <wx/log.h>
#include <wx/thread.h>

#include <memory>

#include "foundations/error_report.h"
#include "toolkit/bars_frame.h"
#include "toolkit/embedding.h"

namespace {

// In the process of another program: its main loop runs, its windows decide when it ends.
class EmbeddedApp : public wxApp {
 public:
  bool OnInit() override {
    SetExitOnFrameDelete(false);
    return true;
  }
  // Destroys the windows that wait for an idle moment to go.
  void DropGoneWindows() {
    ProcessPendingEvents();
    DeletePendingObjects();
  }
};

EmbeddedApp* startedApp = nullptr;  // wxWidgets owns it

void ReportAssertion(const wxString& file, int line, const wxString& function, const wxString& condition,
                     const wxString& message) {
  const wxString text = "wxWidgets: " + condition + " (" + file + ") " + message;
  CQORLog::ReportFailure(text.ToStdString(wxConvUTF8), 0, function.ToStdString(wxConvUTF8),
                         static_cast<unsigned>(line));
}

EmbeddedApp* StartHere() {
  const wxLogNull silence;  // without a display wxWidgets would say so on its own
  EmbeddedApp* app = std::make_unique<EmbeddedApp>().release();
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
  if (BarsFrame* frame = BarsFrame::Existing(); frame != nullptr) frame->Destroy();
  startedApp->DropGoneWindows();
  startedApp->OnExit();
  startedApp = nullptr;
  StopEmbedding();
}

void ReportToolkitAssertions() {
  wxSetAssertHandler(ReportAssertion);
}
