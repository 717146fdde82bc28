#include "terminal/windows/drivers/screen_picture.h"

#include <dlfcn.h>

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
