#include "terminal/windows/frame/window_tools.h"

#include <dlfcn.h>
#include <wx/menu.h>

#include <cstdlib>
#include <string_view>

namespace {

// wxWidgets has loaded Xlib and GLib; their headers are not needed for a few functions.
template <typename Function>
Function* Loaded(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

// The one that DISPLAY names.
bool IsServerReachable() {
  const auto open = Loaded<void*(const char*)>("XOpenDisplay");
  const auto close = Loaded<int(void*)>("XCloseDisplay");
  if (open == nullptr || close == nullptr) return false;
  void* server = open(nullptr);
  if (server != nullptr) close(server);
  return server != nullptr;
}

// GTK 3.24: seen seldom in a run with a file chooser, where a list that has gone is asked once more; the third at some
// starts, of a box with less room than its parts need; the last when a key shows or hides a tab, whose windows move to
// another parent while the key is under way. Drop when GTK 4 is used.
constexpr std::string_view kKnownComplaints[] = {
    "assertion 'GTK_IS_TREE_VIEW (tree_view)' failed", "assertion 'GTK_IS_TREE_SELECTION (selection)' failed",
    "assertion 'extra_space >= 0' failed", "assertion 'WIDGET_REALIZED_FOR_EVENT (widget, event)' failed"};

using LogHandler = void(const char* domain, int level, const char* text, void*);

void PrintUnlessKnown(const char* domain, int level, const char* text, void*) {
  for (const std::string_view known : kKnownComplaints)
    if (std::string_view(text).ends_with(known)) return;
  static const auto print = Loaded<LogHandler>("g_log_default_handler");
  if (print != nullptr) print(domain, level, text, nullptr);
}

constexpr int kCritical = 1 << 3;  // G_LOG_LEVEL_CRITICAL

}  // namespace

void ChooseWindowSystem() {
  if (IsServerReachable()) setenv("GDK_BACKEND", "x11", 0);
}

void DropKnownComplaints() {
  const auto setHandler = Loaded<unsigned(const char*, int, LogHandler*, void*)>("g_log_set_handler");
  if (setHandler != nullptr) setHandler("Gtk", kCritical, PrintUnlessKnown, nullptr);
}

// wxGTK 3.2 shows a frame at two pixels before it gives it its size; GTK 3.24 complains of a menu bar in such a frame.
// Drop when 3.4 is the floor.
void HideMenuBarUntilShown(wxFrame& frame) {
  frame.GetMenuBar()->Hide();
  frame.Bind(wxEVT_SHOW, [&frame](wxShowEvent& event) {
    event.Skip();
    if (event.IsShown()) frame.GetMenuBar()->Show();
  });
}

namespace {

// wxWidgets has loaded cairo; its headers are not needed for two functions.
template <typename Function>
Function* Cairo(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

}  // namespace

// cairo assumes that only it draws on the screen, and keeps its first copy.
void ForgetScreenContent(wxDC& screen) {
  const auto targetOf = Cairo<void*(void*)>("cairo_get_target");
  const auto markDirty = Cairo<void(void*)>("cairo_surface_mark_dirty");
  if (targetOf == nullptr || markDirty == nullptr || screen.GetHandle() == nullptr) return;
  markDirty(targetOf(screen.GetHandle()));
}
