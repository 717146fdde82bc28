#include "toolkit/start/toolkit_start.h"

#include <wx/app.h>
#include <wx/log.h>
#include <wx/thread.h>
#include <wx/toplevel.h>

#include "foundations/error_report.h"
#include "toolkit/bars/docking_parts.h"
#include "toolkit/start/embedding.h"
#include "toolkit/system/make_child.h"

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
  if (BarsFrame* frame = BarsFrame::Existing(); frame != nullptr) frame->Destroy();
  startedApp->DropGoneWindows();
  startedApp->OnExit();
  startedApp = nullptr;
  StopEmbedding();
}

void ReportToolkitAssertions() {
  wxSetAssertHandler(ReportAssertion);
}

namespace {

const wxRect kUsualRect{80, 80, 1000, 640};

template <typename Wanted>
Wanted* FindFrame() {
  for (wxWindow* window : wxTopLevelWindows)
    if (auto* frame = dynamic_cast<Wanted*>(window); frame != nullptr && !frame->IsBeingDeleted()) return frame;
  return nullptr;
}

}  // namespace

BarsFrame::BarsFrame() : CQORPFrame(nullptr, wxID_ANY, wxTheApp->GetAppDisplayName().ToStdWstring(), kUsualRect) {
  Bind(wxEVT_CLOSE_WINDOW, &BarsFrame::OnClose, this);
}

BarsFrame* BarsFrame::Existing() {
  return FindFrame<BarsFrame>();
}

void BarsFrame::OnClose(wxCloseEvent& event) {
  const std::vector<CQORPDockingControlBar*> bars = GetDockingManager().Bars();
  bool shown = false;
  for (CQORPDockingControlBar* bar : bars) {
    if (bar->IsBarShown()) RunBarCommand(*bar, BarCommand::Hide, DockSide::Left);
    shown = shown || bar->IsBarShown();
  }
  if (!shown) Hide();
  if (event.CanVeto()) event.Veto();
}

CQORPDockingManager* CQORPDockingManager::ForProcess() {
  if (!StartToolkit()) return nullptr;
  BarsFrame* own = BarsFrame::Existing();
  for (wxWindow* window : wxTopLevelWindows) {
    auto* frame = dynamic_cast<CQORPFrame*>(window);
    if (frame != nullptr && frame != own && !frame->IsBeingDeleted()) return &frame->GetDockingManager();
  }
  if (own == nullptr) {
    own = &MakeChild<BarsFrame>();  // a top-level window destroys itself
    own->GetDockingManager().Parts->ShowsFrame = true;
  }
  return &own->GetDockingManager();
}
