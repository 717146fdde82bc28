// A module as a terminal without wxWidgets loads it: a bar with two edit fields in a frame of the toolkit's making.
#include "tests/embedding/bar_module.h"

#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "platform/modules.h"
#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/dialogs/message_box.h"
#include "toolkit/start/toolkit_start.h"

namespace {

class EditBar : public CQORPDockingControlBar {
 public:
  bool PreTranslateMessage(wxKeyEvent& event) override {
    ++KeyCount;
    return event.GetKeyCode() == WXK_F8;
  }
  wxTextCtrl* First = nullptr;
  wxTextCtrl* Second = nullptr;
  int KeyCount = 0, LaterCount = 0, IdleCount = 0;
};

struct UnloadNotice {
  ~UnloadNotice() {
    if (Flag != nullptr) *Flag = true;
  }
  bool* Flag = nullptr;
} unloadNotice;

EditBar* bar = nullptr;
bool (*isHostEnabled)() = nullptr;

Answer When(bool done) {
  return done ? Answer::Done : Answer::Wait;
}
Answer Must(bool holds) {
  return holds ? Answer::Done : Answer::Failed;
}

Answer Open() {
  CQORPDockingManager* manager = CQORPDockingManager::ForProcess();
  if (manager == nullptr) return Answer::Failed;
  bar = new EditBar;
  if (!bar->CreateBar(*manager, L"Book", wxRect(300, 200, 300, 200), 1)) return Answer::Failed;
  bar->First = new wxTextCtrl(bar, wxID_ANY, wxEmptyString, wxPoint(10, 10), wxSize(200, 40));
  bar->Second = new wxTextCtrl(bar, wxID_ANY, wxEmptyString, wxPoint(10, 60), wxSize(200, 40));
  bar->Bind(wxEVT_IDLE, [](wxIdleEvent&) { ++bar->IdleCount; });
  bar->CallAfter([] { ++bar->LaterCount; });
  bar->ShowControlBar(true);
  return Answer::Done;
}

Answer TypeIntoFirst() {
  bar->First->SetFocus();
  auto* frame = dynamic_cast<wxTopLevelWindow*>(wxGetTopLevelParent(bar));
  if (wxWindow::FindFocus() != bar->First || frame == nullptr || !frame->IsActive()) return Answer::Wait;
  wxUIActionSimulator keys;
  return Must(keys.Char('a') && keys.Char('b') && keys.Char(WXK_F8) && keys.Char(WXK_TAB));
}

Answer Dock() {
  bar->DockControlBar(DockSide::Left);
  return Must(bar->IsDocked() && bar->GetParentMiniFrame() == nullptr);
}

// Runs a loop of its own over the program's; a call put off until then presses Escape.
Answer ShowBox() {
  bool blocked = false;
  wxTheApp->CallAfter([&blocked] {
    blocked = isHostEnabled != nullptr && !isHostEnabled();
    for (wxWindow* window : wxTopLevelWindows)
      if (auto* dialog = dynamic_cast<wxDialog*>(window); dialog != nullptr && dialog->IsModal()) dialog->Close();
  });
  CQORPMessageBox box({.Parent = bar, .Caption = L"Book", .Text = L"Close?", .Style = 1});
  const int answer = box.ShowModal();
  return Must(answer == 2 && (isHostEnabled == nullptr || (blocked && isHostEnabled())));
}

Answer Tab() {
  bar->TabControlBar();
  return Must(bar->IsMDITabbed());
}

Answer Stop() {
  StopToolkit();
  bar = nullptr;
  return Must(wxTheApp == nullptr);
}

using Step = Answer (*)();
constexpr Step kSteps[] = {
    Open,
    [] { return When(bar->IsShownOnScreen() && bar->LaterCount == 1 && bar->IdleCount > 0); },
    TypeIntoFirst,
    [] { return When(bar->First->GetValue() == L"ab" && wxWindow::FindFocus() == bar->Second && bar->KeyCount >= 4); },
    Dock,
    [] { return When(bar->IsShownOnScreen()); },
    ShowBox,
    Tab,
    [] { return When(bar->GetParentMDIChild()->IsShownOnScreen()); },
    Stop,
};

}  // namespace

TRADEBOOK_EXPORT bool Start() {
  return StartToolkit();
}
TRADEBOOK_EXPORT int StepCount() {
  return static_cast<int>(std::size(kSteps));
}
TRADEBOOK_EXPORT Answer RunStep(int step) {
  return kSteps[step]();
}
TRADEBOOK_EXPORT void SetWindowCheck(bool (*isEnabled)()) {
  isHostEnabled = isEnabled;
}
TRADEBOOK_EXPORT void SetUnloadFlag(bool* flag) {
  unloadNotice.Flag = flag;
}
