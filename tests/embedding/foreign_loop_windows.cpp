#include <windows.h>

#include <utility>

#include "tests/embedding/foreign_loop.h"

namespace {

constexpr UINT kTickMs = 5;
constexpr wchar_t kClass[] = L"ForeignTerminal";
HWND foreignWindow = nullptr;
const std::function<bool()>* currentTick = nullptr;

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  // The loop of a modal dialog runs the timer too; a tick does not run within a tick.
  if (const auto* tick = std::exchange(currentTick, nullptr); message == WM_TIMER && tick != nullptr && !(*tick)()) {
    PostQuitMessage(0);
  } else {
    currentTick = tick;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

// Ends the enumeration at the window.
BOOL CALLBACK IsNotShown(HWND window, LPARAM title) {
  char name[256] = "";
  GetWindowTextA(window, name, sizeof name);
  return IsWindowVisible(window) == 0 || *reinterpret_cast<const std::string*>(title) != name;
}

}  // namespace

bool HideDisplay() {
  return false;
}
void ShowDisplay() {}

bool OpenForeignWindow() {
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = OnMessage;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.lpszClassName = kClass;
  RegisterClassW(&windowClass);
  foreignWindow = CreateWindowW(kClass, L"Terminal", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 500, 300, 200, nullptr,
                                nullptr, windowClass.hInstance, nullptr);
  return foreignWindow != nullptr;
}

std::optional<bool> ForeignWindowTakesInput() {
  return IsWindowEnabled(foreignWindow) != 0;
}

void RunForeignLoop(const std::function<bool()>& tick) {
  currentTick = &tick;
  SetTimer(foreignWindow, 1, kTickMs, nullptr);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  KillTimer(foreignWindow, 1);
}

bool ShowsWindow(const std::string& title) {
  return EnumThreadWindows(GetCurrentThreadId(), IsNotShown, reinterpret_cast<LPARAM>(&title)) == 0;
}

bool HasLoaded(const std::filesystem::path& module) {
  return GetModuleHandleW(module.filename().c_str()) != nullptr;
}
