#include <dlfcn.h>

#include <cstdlib>
#include <string>

#include "tests/embedding/foreign_loop.h"

namespace {

constexpr unsigned kTickMs = 5;

// The GTK of the machine, without its headers.
template <typename Function>
Function* Gtk(const char* name) {
  static void* const library = dlopen("libgtk-3.so.0", RTLD_NOW | RTLD_GLOBAL);
  return library == nullptr ? nullptr : reinterpret_cast<Function*>(dlsym(library, name));
}

std::string hiddenDisplay;

int OnTick(void* tick) {
  if ((*static_cast<const std::function<bool()>*>(tick))()) return 1;
  Gtk<void()>("gtk_main_quit")();
  return 0;
}

}  // namespace

bool HideDisplay() {
  const char* name = std::getenv("DISPLAY");
  hiddenDisplay = name == nullptr ? "" : name;
  unsetenv("DISPLAY");
  return true;
}

void ShowDisplay() {
  if (!hiddenDisplay.empty()) setenv("DISPLAY", hiddenDisplay.c_str(), 1);
}

bool OpenForeignWindow() {
  const auto init = Gtk<int(int*, char***)>("gtk_init_check");
  if (init == nullptr || init(nullptr, nullptr) == 0) return false;
  void* window = Gtk<void*(int)>("gtk_window_new")(0);
  Gtk<void(void*, void*)>("gtk_container_add")(window, Gtk<void*()>("gtk_entry_new")());
  Gtk<void(void*)>("gtk_widget_show_all")(window);
  // A window manager activates it late, which would take the focus from a bar that opens before.
  TickUntil([window] { return Gtk<int(void*)>("gtk_window_is_active")(window) != 0; });
  return true;
}

// GTK itself keeps events from the windows behind a modal one.
std::optional<bool> ForeignWindowTakesInput() {
  return std::nullopt;
}

void RunForeignLoop(const std::function<bool()>& tick) {
  const auto addTimeout = Gtk<unsigned(unsigned, int (*)(void*), void*)>("g_timeout_add");
  addTimeout(kTickMs, OnTick, const_cast<std::function<bool()>*>(&tick));
  Gtk<void()>("gtk_main")();
}

bool ShowsWindow(const std::string& title) {
  struct List {
    void* Window;
    List* Next;
  };
  List* const windows = Gtk<List*()>("gtk_window_list_toplevels")();
  bool shows = false;
  for (const List* place = windows; place != nullptr; place = place->Next) {
    const char* name = Gtk<const char*(void*)>("gtk_window_get_title")(place->Window);
    shows |= name != nullptr && name == title && Gtk<int(void*)>("gtk_widget_get_mapped")(place->Window) != 0;
  }
  Gtk<void(List*)>("g_list_free")(windows);
  return shows;
}

bool HasLoaded(const std::filesystem::path& module) {
  void* const found = dlopen(module.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (found != nullptr) dlclose(found);
  return found != nullptr;
}
