#include "tests/toolkit/gui_test.h"

#include <wx/app.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/eventfilter.h>
#include <wx/evtloop.h>
#include <wx/log.h>
#include <wx/uiaction.h>

#include <chrono>
#include <string_view>
#include <utility>

#include "toolkit/system/make_child.h"

#ifdef __SANITIZE_ADDRESS__
// The font library frees nothing at the end of the process.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n";
}
#endif

namespace {

constexpr int kWaitMs = 10;
constexpr std::chrono::seconds kPatience(60);  // only a failing test waits that long
constexpr int kNoDisplay = 77;                 // skips the program

void ReportAssertion(const wxString& file, int line, const wxString& /*function*/, const wxString& condition,
                     const wxString& message) {
  ADD_FAILURE_AT(file.utf8_str(), line) << "assertion of wxWidgets: " << condition << ' ' << message;
}

// Sees the paint event of a window without binding a handler: wxWidgets 3.2 crashes if handlers come and go.
struct PaintWatch : wxEventFilter {
  explicit PaintWatch(const wxWindow& window) : Watched(window) { wxEvtHandler::AddFilter(this); }
  ~PaintWatch() override { wxEvtHandler::RemoveFilter(this); }
  int FilterEvent(wxEvent& event) override {
    Painted |= event.GetEventType() == wxEVT_PAINT && event.GetEventObject() == &Watched;
    return Event_Skip;
  }
  const wxWindow& Watched;
  bool Painted = false;
};

bool Send(wxWindow& window, auto& event, int held) {
  event.SetEventObject(&window);
  event.SetId(window.GetId());
  event.SetShiftDown((held & kShift) != 0);
  event.SetControlDown((held & kControl) != 0);
  event.SetAltDown((held & kAlt) != 0);
  return window.GetEventHandler()->ProcessEvent(event);
}

// True if a handler took the key.
bool SendKey(wxWindow& window, wxEventType type, int keyCode, int held) {
  wxKeyEvent event(type);
  event.m_keyCode = keyCode;
  event.m_uniChar = static_cast<wxChar>(keyCode < WXK_START ? keyCode : 0);
  return Send(window, event, held) && !(type == wxEVT_CHAR_HOOK && event.IsNextEventAllowed());
}

wxImage Screenshot(wxWindow& window) {
  PaintNow(window);
  Pump();
  const wxSize size = window.GetClientSize();
  wxClientDC source(&window);
  wxBitmap bitmap(size.x, size.y);
  wxMemoryDC(bitmap).Blit(0, 0, size.x, size.y, &source, 0, 0);
  return bitmap.ConvertToImage();
}

std::string_view BytesOf(const wxImage& image) {
  return {reinterpret_cast<const char*>(image.GetData()),
          static_cast<std::size_t>(3 * image.GetWidth() * image.GetHeight())};
}

}  // namespace

void GuiTest::SetUp() {
  Frame = &MakeChild<wxFrame>(nullptr, wxID_ANY, L"Test", wxPoint(20, 20), wxSize(1200, 700));
  Frame->Show();
  Frame->Raise();
  WaitForActivation(*Frame);
}

void GuiTest::TearDown() {
  Frame->Destroy();
  Pump();
}

void Pump() {
  wxEventLoopBase& loop = *wxEventLoopBase::GetActive();
  for (int round = 0; round < 50; ++round) {
    bool served = false;
    for (; loop.Pending(); served = true) loop.Dispatch();
    for (; wxTheApp->HasPendingEvents(); served = true) wxTheApp->ProcessPendingEvents();
    for (int idle = 0; idle < 20 && loop.ProcessIdle();) ++idle;
    if (!served) break;
  }
}

bool PumpUntil(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  for (Pump(); !condition(); Pump()) {
    if (std::chrono::steady_clock::now() > end) return false;
    wxEventLoopBase::GetActive()->DispatchTimeout(kWaitMs);
  }
  return true;
}

// Some systems paint at the next refresh of the screen only.
void PaintNow(wxWindow& window) {
  PaintWatch watch(window);
  window.Refresh();
  window.Update();
  EXPECT_TRUE(PumpUntil([&watch] { return watch.Painted; }));
}

wxDialog* ModalDialog() {
  for (wxWindow* window : wxTopLevelWindows)
    if (auto* dialog = dynamic_cast<wxDialog*>(window); dialog != nullptr && dialog->IsModal()) return dialog;
  return nullptr;
}

void SendMouse(wxWindow& window, const wxPoint& point, int held, std::initializer_list<wxEventType> types) {
  for (const wxEventType type : types) {
    wxMouseEvent event(type);
    event.SetPosition(point);
    event.SetLeftDown(type == wxEVT_LEFT_DOWN || type == wxEVT_MOTION);
    Send(window, event, held);
  }
}

void Click(wxWindow& window, const wxPoint& point, int held) {
  SendMouse(window, point, held, {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP});
  Pump();
}

void DoubleClick(wxWindow& window, const wxPoint& point) {
  Click(window, point);
  SendMouse(window, point, kNoKey, {wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP});
  Pump();
}

void RightClick(wxWindow& window, const wxPoint& point) {
  SendMouse(window, point, kNoKey, {wxEVT_RIGHT_DOWN, wxEVT_RIGHT_UP});
  wxContextMenuEvent event(wxEVT_CONTEXT_MENU, window.GetId(), window.ClientToScreen(point));
  event.SetEventObject(&window);
  window.GetEventHandler()->ProcessEvent(event);
  Pump();
}

void Drag(wxWindow& window, const wxPoint& from, const wxPoint& to) {
  SendMouse(window, from, kNoKey, {wxEVT_LEFT_DOWN});
  SendMouse(window, (from + to) / 2, kNoKey, {wxEVT_MOTION});
  SendMouse(window, to, kNoKey, {wxEVT_MOTION, wxEVT_LEFT_UP});
  Pump();
}

void Press(wxWindow& window, int keyCode, int held) {
  if (!SendKey(window, wxEVT_CHAR_HOOK, keyCode, held) && !SendKey(window, wxEVT_KEY_DOWN, keyCode, held))
    SendKey(window, wxEVT_CHAR, keyCode, held);
  SendKey(window, wxEVT_KEY_UP, keyCode, held);
  Pump();
}

// A window manager places a new window before it activates it. If the first one never becomes active, there is no
// window manager, and places and sizes are final at once.
void WaitForActivation(wxWindow& window) {
  auto& top = dynamic_cast<wxTopLevelWindow&>(*wxGetTopLevelParent(&window));
  const auto isActive = [&top] { return top.IsActive(); };
  static const bool isManaged = PumpUntil(isActive);
  if (isManaged) PumpUntil(isActive);
  Pump();
}

bool GiveRealFocus(wxWindow& window) {
  wxGetTopLevelParent(&window)->Raise();
  WaitForActivation(window);
  window.SetFocus();
  return PumpUntil([&window] { return wxWindow::FindFocus() == &window; });
}

// A place that the X server has cleared is black until it is painted again: the picture counts that comes out twice.
wxImage PictureOf(wxWindow& window) {
  wxImage before, picture;
  EXPECT_TRUE(PumpUntil([&] {
    before = std::exchange(picture, Screenshot(window));
    return before.IsOk() && BytesOf(before) == BytesOf(picture);
  }));
  return picture;
}

wxColour ColourAt(const wxImage& picture, const wxPoint& place) {
  return {picture.GetRed(place.x, place.y), picture.GetGreen(place.x, place.y), picture.GetBlue(place.x, place.y)};
}

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  wxSetAssertHandler(ReportAssertion);
  wxApp::SetInstance(&MakeChild<wxApp>());
  wxLog::SetActiveTarget(&MakeChild<wxLogStderr>());
  if (!wxEntryStart(argc, argv)) return kNoDisplay;
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
