// wx needs the system's header first.
#include <windows.h>

#include "toolkit/system/native_windows.h"

#include <wx/access.h>
#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/evtloop.h>
#include <wx/init.h>
#include <wx/modalhook.h>
#include <wx/msw/private.h>
#include <wx/textentry.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "toolkit/system/make_child.h"

// The cursor follows the selection.
void MoveListCursor(wxListBox& /*list*/, int /*item*/) {}

void SetListName(wxListBox& list, const std::wstring& name) {
  SetAccessibleName(list, name);
}

namespace {

// Name and description beside the text of the window. All else comes from the system.
class SpokenWindow : public wxAccessible {
 public:
  using wxAccessible::wxAccessible;
  wxAccStatus GetName(int child, wxString* name) override { return Give(Name, child, name); }
  wxAccStatus GetDescription(int child, wxString* description) override {
    return Give(Description, child, description);
  }

  std::optional<wxString> Name;
  std::optional<wxString> Description;

 private:
  static wxAccStatus Give(const std::optional<wxString>& text, int child, wxString* given) {
    if (!text || child != wxACC_SELF) return wxACC_NOT_IMPLEMENTED;
    *given = *text;
    return wxACC_OK;
  }
};

SpokenWindow& SpokenOf(wxWindow& window) {
  if (auto* known = dynamic_cast<SpokenWindow*>(window.GetAccessible())) return *known;
  auto& made = MakeChild<SpokenWindow>(&window);
  window.SetAccessible(&made);
  return made;
}

}  // namespace

// Otherwise screen readers use the text of the window, and its changes.
void SetAccessibleName(wxWindow& window, const std::wstring& name) {
  if (dynamic_cast<wxTextEntry*>(&window) == nullptr) return window.SetLabel(name);
  SpokenOf(window).Name = name;
  wxAccessible::NotifyEvent(wxACC_EVENT_OBJECT_NAMECHANGE, &window, wxOBJID_CLIENT, wxACC_SELF);
}

void SetAccessibleDescription(wxWindow& window, const std::wstring& description) {
  SpokenOf(window).Description = description;
  wxAccessible::NotifyEvent(wxACC_EVENT_OBJECT_DESCRIPTIONCHANGE, &window, wxOBJID_CLIENT, wxACC_SELF);
}

// wxHTMLDataObject writes UTF-8 with the header of the format.
std::unique_ptr<wxDataObjectSimple> HtmlForClipboard(const std::string& html) {
  return std::make_unique<wxHTMLDataObject>(wxString::FromUTF8(html.data(), html.size()));
}

void KeepClipboardAfterEnd() {
  wxTheClipboard->Flush();
}

// The GetMessage loop of the process dispatches messages to the windows of wxWidgets. A message hook of the thread adds
// accelerators and Tab before the dispatch, the event queue of wxWidgets after it, and idle events when the message
// queue is empty, by a message to a hidden window.
namespace {

constexpr UINT kIdleMessage = WM_APP + 7;
constexpr wchar_t kIdleClass[] = L"CQORPToolkitIdle";

// Disables the windows of the process while a modal dialog of the toolkit is shown.
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
  std::vector<std::vector<HWND>> Blocked;  // a list for each nested dialog
};

// Intentional: leaked if the process ends without StopToolkit, as wxWidgets is no longer usable then.
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
  // A nested loop, such as that of a modal dialog, belongs to wxWidgets and needs no help.
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
  // Pins this library, as its window procedures outlive the module that loaded it.
  const HINSTANCE library = ThisLibrary(GET_MODULE_HANDLE_EX_FLAG_PIN);
  if (!wxEntryStart(library)) return false;
  TieToLoop(library);
  return true;
}

void StopEmbedding() {
  UntieFromLoop();
  wxEntryCleanup();
}
