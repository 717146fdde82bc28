#include "tests/toolkit/gui_test.h"

#include <wx/app.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/eventfilter.h>
#include <wx/evtloop.h>
#include <wx/log.h>
#include <wx/uiaction.h>

#include "toolkit/system/make_child.h"

#ifdef __SANITIZE_ADDRESS__
// The font library frees nothing at the end of the process.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n";
}
#endif

namespace {

constexpr int kWaitRounds = 500;
constexpr int kWaitMs = 10;

bool displayIsThere = false;

void ReportAssertion(const wxString& file, int line, const wxString& function, const wxString& condition,
                     const wxString& message) {
  ADD_FAILURE() << "assertion of wxWidgets: " << file.ToStdString() << ':' << line << ' ' << function.ToStdString()
                << ": " << condition.ToStdString() << ' ' << message.ToStdString();
}

// Sees the paint event of a window without binding a handler: wxWidgets 3.2 crashes if handlers come and go.
class PaintWatch : public wxEventFilter {
 public:
  explicit PaintWatch(const wxWindow& window) : Watched(window) { wxEvtHandler::AddFilter(this); }
  ~PaintWatch() override { wxEvtHandler::RemoveFilter(this); }
  PaintWatch(const PaintWatch&) = delete;
  PaintWatch& operator=(const PaintWatch&) = delete;
  int FilterEvent(wxEvent& event) override {
    Painted |= event.GetEventType() == wxEVT_PAINT && event.GetEventObject() == &Watched;
    return Event_Skip;
  }
  bool WasPainted() const noexcept { return Painted; }

 private:
  const wxWindow& Watched;
  bool Painted = false;
};

void ProcessIdle(wxEventLoopBase& loop) {
  for (int round = 0; round < 20 && loop.ProcessIdle(); ++round) {
  }
}

void Hold(wxKeyboardState& state, int held) {
  state.SetShiftDown((held & kShift) != 0);
  state.SetControlDown((held & kControl) != 0);
  state.SetAltDown((held & kAlt) != 0);
}

void SendMouse(wxWindow& window, wxEventType type, const wxPoint& point, int held, bool leftIsDown = false) {
  wxMouseEvent event(type);
  event.SetEventObject(&window);
  event.SetId(window.GetId());
  event.SetPosition(point);
  Hold(event, held);
  event.SetLeftDown(leftIsDown);
  window.GetEventHandler()->ProcessEvent(event);
}

// True if a handler took the key.
bool SendKey(wxWindow& window, wxEventType type, int keyCode, int held) {
  wxKeyEvent event(type);
  event.SetEventObject(&window);
  event.SetId(window.GetId());
  event.m_keyCode = keyCode;
  event.m_uniChar = static_cast<wxChar>(keyCode < WXK_START ? keyCode : 0);
  Hold(event, held);
  const bool taken = window.GetEventHandler()->ProcessEvent(event);
  return type == wxEVT_CHAR_HOOK ? taken && !event.IsNextEventAllowed() : taken;
}

}  // namespace

void GuiTest::SetUp() {
  if (!displayIsThere) GTEST_SKIP() << "there is no display to make windows on";
  Frame = &MakeChild<wxFrame>(nullptr, wxID_ANY, L"Test", wxPoint(20, 20), wxSize(1200, 700));
  Frame->Show();
  Frame->Raise();
  WaitForActivation(*Frame);
}

void GuiTest::TearDown() {
  if (Frame == nullptr) return;
  Frame->Destroy();
  Pump();
}

void Pump() {
  wxEventLoopBase& loop = *wxEventLoopBase::GetActive();
  for (int round = 0; round < 50; ++round) {
    bool served = false;
    for (; loop.Pending(); served = true) loop.Dispatch();
    for (; wxTheApp->HasPendingEvents(); served = true) wxTheApp->ProcessPendingEvents();
    ProcessIdle(loop);
    if (!served) break;
  }
}

bool PumpUntil(const std::function<bool()>& condition) {
  for (int round = 0; round < kWaitRounds; ++round) {
    Pump();
    if (condition()) return true;
    wxEventLoopBase::GetActive()->DispatchTimeout(kWaitMs);
  }
  return false;
}

// Some systems paint at the next refresh of the screen only.
void PaintNow(wxWindow& window) {
  PaintWatch watch(window);
  window.Refresh();
  window.Update();
  EXPECT_TRUE(PumpUntil([&watch] { return watch.WasPainted(); }));
}

wxDialog* ModalDialog() {
  for (wxWindow* window : wxTopLevelWindows)
    if (auto* dialog = dynamic_cast<wxDialog*>(window); dialog != nullptr && dialog->IsModal()) return dialog;
  return nullptr;
}

void Click(wxWindow& window, const wxPoint& point, int held) {
  SendMouse(window, wxEVT_LEFT_DOWN, point, held, true);
  SendMouse(window, wxEVT_LEFT_UP, point, held);
  Pump();
}

void DoubleClick(wxWindow& window, const wxPoint& point) {
  Click(window, point);
  SendMouse(window, wxEVT_LEFT_DCLICK, point, kNoKey, true);
  SendMouse(window, wxEVT_LEFT_UP, point, kNoKey);
  Pump();
}

void RightClick(wxWindow& window, const wxPoint& point) {
  SendMouse(window, wxEVT_RIGHT_DOWN, point, kNoKey);
  SendMouse(window, wxEVT_RIGHT_UP, point, kNoKey);
  wxContextMenuEvent event(wxEVT_CONTEXT_MENU, window.GetId(), window.ClientToScreen(point));
  event.SetEventObject(&window);
  window.GetEventHandler()->ProcessEvent(event);
  Pump();
}

void Drag(wxWindow& window, const wxPoint& from, const wxPoint& to, int held) {
  SendMouse(window, wxEVT_LEFT_DOWN, from, held, true);
  SendMouse(window, wxEVT_MOTION, {(from.x + to.x) / 2, (from.y + to.y) / 2}, held, true);
  SendMouse(window, wxEVT_MOTION, to, held, true);
  SendMouse(window, wxEVT_LEFT_UP, to, held);
  Pump();
}

void Press(wxWindow& window, int keyCode, int held) {
  if (!SendKey(window, wxEVT_CHAR_HOOK, keyCode, held) && !SendKey(window, wxEVT_KEY_DOWN, keyCode, held))
    SendKey(window, wxEVT_CHAR, keyCode, held);
  SendKey(window, wxEVT_KEY_UP, keyCode, held);
  Pump();
}

void DragRealPointer(wxWindow& window, const wxPoint& from, const wxPoint& to) {
  wxUIActionSimulator pointer;
  pointer.MouseMove(window.ClientToScreen(from));
  Pump();
  pointer.MouseDown();
  Pump();
  for (int step = 1; step <= 4; ++step) {
    pointer.MouseMove(window.ClientToScreen(from + (to - from) * step / 4));
    Pump();
  }
  pointer.MouseUp();
  Pump();
}

// A window manager places a new window before it activates it. If the first one never becomes active, there is no
// window manager, and places and sizes are final at once.
void WaitForActivation(wxWindow& window) {
  static bool isManaged = true;
  auto& top = dynamic_cast<wxTopLevelWindow&>(*wxGetTopLevelParent(&window));
  if (isManaged) isManaged = PumpUntil([&top] { return top.IsActive(); });
  Pump();
}

bool GiveRealFocus(wxWindow& window) {
  wxGetTopLevelParent(&window)->Raise();
  WaitForActivation(window);
  window.SetFocus();
  return PumpUntil([&window] { return wxWindow::FindFocus() == &window; });
}

wxImage PictureOf(wxWindow& window) {
  PaintNow(window);
  Pump();
  const wxSize size = window.GetClientSize();
  wxClientDC source(&window);
  wxBitmap bitmap(size.x, size.y);
  wxMemoryDC(bitmap).Blit(0, 0, size.x, size.y, &source, 0, 0);
  return bitmap.ConvertToImage();
}

bool SavePicture(wxWindow& window, const std::wstring& path) {
  return PictureOf(window).SaveFile(path, wxBITMAP_TYPE_PNG);
}

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  wxSetAssertHandler(ReportAssertion);
  wxApp::SetInstance(&MakeChild<wxApp>());
  wxLog::SetActiveTarget(&MakeChild<wxLogStderr>());
  displayIsThere = wxEntryStart(argc, argv);
  if (!displayIsThere) return RUN_ALL_TESTS();
  wxTheApp->SetExitOnFrameDelete(false);
  wxTheApp->CallOnInit();
  wxInitAllImageHandlers();
  int outcome = 0;
  {
    wxGUIEventLoop loop;
    wxEventLoopActivator active(&loop);
    outcome = RUN_ALL_TESTS();
    Pump();
  }
  wxTheApp->OnExit();
  wxEntryCleanup();
  return outcome;
}
