// The process's own GetMessage loop dispatches to wxWidgets' windows by itself. What it does not know of, a hook on the
// thread's messages adds: accelerators and Tab before the dispatch, wxWidgets' queue after it, and idle work whenever
// no message is left, by a message that the hook posts to a window of ours.
#include "toolkit/start/toolkit_start.h"

#include <windows.h>
// wx needs the system's header first.
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>
#include <wx/modalhook.h>
#include <wx/msw/private.h>

#include <memory>
#include <vector>

namespace {

constexpr UINT kIdleMessage = WM_APP + 7;
constexpr wchar_t kIdleClass[] = L"CQORPToolkitIdle";

// While a modal window of the toolkit is up, the process's own windows take no input.
class HostWindowsBlocker : public wxModalDialogHook {
 protected:
  int Enter(wxDialog* /*dialog*/) override {
    Blocked.emplace_back();
    EnumThreadWindows(GetCurrentThreadId(), BlockWindow, reinterpret_cast<LPARAM>(&Blocked.back()));
    return wxID_NONE;
  }
  void Exit(wxDialog* /*dialog*/) override {
    if (Blocked.empty()) return;
    for (HWND window : Blocked.back()) EnableWindow(window, TRUE);
    Blocked.pop_back();
  }

 private:
  static BOOL CALLBACK BlockWindow(HWND window, LPARAM list) {
    if (IsWindowVisible(window) && IsWindowEnabled(window) && wxGetWindowFromHWND(window) == nullptr) {
      EnableWindow(window, FALSE);
      reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    }
    return TRUE;
  }
  std::vector<std::vector<HWND>> Blocked;  // one list for each dialog on top of another
};

// Plain pointers: at the end of a process that did not stop the toolkit nothing is to be torn down any more.
wxGUIEventLoop* loop = nullptr;
HostWindowsBlocker* blocker = nullptr;
HHOOK hook = nullptr;
HWND idleWindow = nullptr;
bool idlePosted = false;

HINSTANCE ThisLibrary(DWORD flags) {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flags, reinterpret_cast<LPCWSTR>(&StartEmbedding),
                     &module);
  return module;
}

void PostIdle() {
  if (!idlePosted) idlePosted = PostMessageW(idleWindow, kIdleMessage, 0, 0) != 0;
}

LRESULT CALLBACK OnIdleWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != kIdleMessage) return DefWindowProcW(window, message, wParam, lParam);
  idlePosted = false;
  if (loop != nullptr && wxEventLoopBase::GetActive() == loop && loop->ProcessIdle()) PostIdle();
  return 0;
}

bool IsKeyMessage(UINT message) {
  return message >= WM_KEYFIRST && message <= WM_KEYLAST;
}

void ServeMessage(MSG& message) {
  if (message.hwnd == idleWindow) return;
  if (IsKeyMessage(message.message) && wxGetWindowFromHWND(message.hwnd) != nullptr &&
      loop->PreProcessMessage(&message))
    message.message = WM_NULL;
  if (wxTheApp->HasPendingEvents()) wxTheApp->ProcessPendingEvents();
  if (HIWORD(GetQueueStatus(QS_ALLINPUT)) == 0) PostIdle();
}

LRESULT CALLBACK OnGetMessage(int code, WPARAM removed, LPARAM message) {
  // A nested loop, as of a modal dialog, is wxWidgets' own and serves itself.
  if (code == HC_ACTION && removed == PM_REMOVE && wxTheApp != nullptr && wxEventLoopBase::GetActive() == loop)
    ServeMessage(*reinterpret_cast<MSG*>(message));
  return CallNextHookEx(nullptr, code, removed, message);
}

void TieToLoop(HINSTANCE library) {
  WNDCLASSW idleClass{};
  idleClass.lpfnWndProc = OnIdleWindow;
  idleClass.hInstance = library;
  idleClass.lpszClassName = kIdleClass;
  RegisterClassW(&idleClass);
  idleWindow = CreateWindowW(kIdleClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, library, nullptr);
  loop = std::make_unique<wxGUIEventLoop>().release();
  wxEventLoopBase::SetActive(loop);
  hook = SetWindowsHookExW(WH_GETMESSAGE, OnGetMessage, nullptr, GetCurrentThreadId());
  blocker = std::make_unique<HostWindowsBlocker>().release();
  blocker->Register();
}

void UntieFromLoop() {
  std::unique_ptr<HostWindowsBlocker>(std::exchange(blocker, nullptr))->Unregister();
  UnhookWindowsHookEx(std::exchange(hook, nullptr));
  wxEventLoopBase::SetActive(nullptr);
  std::unique_ptr<wxGUIEventLoop>(std::exchange(loop, nullptr)).reset();
  DestroyWindow(std::exchange(idleWindow, nullptr));
  UnregisterClassW(kIdleClass, ThisLibrary(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT));
  idlePosted = false;
}

}  // namespace

bool StartEmbedding() {
  // Window procedures of this library outlive the module that brought it: it stays in the process.
  const HINSTANCE library = ThisLibrary(GET_MODULE_HANDLE_EX_FLAG_PIN);
  if (!wxEntryStart(library)) return false;
  TieToLoop(library);
  return true;
}

void StopEmbedding() {
  UntieFromLoop();
  wxEntryCleanup();
}
