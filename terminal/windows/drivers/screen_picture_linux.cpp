#include "terminal/windows/drivers/screen_picture.h"

#include <dlfcn.h>

namespace {

// wxWidgets has loaded cairo; its headers are not needed for two functions.
template <typename Function>
Function* Cairo(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

}  // namespace

// cairo takes the screen for a surface that only it draws on, and keeps the first copy of it.
void ForgetScreenContent(wxDC& screen) {
  const auto targetOf = Cairo<void*(void*)>("cairo_get_target");
  const auto markDirty = Cairo<void(void*)>("cairo_surface_mark_dirty");
  if (targetOf == nullptr || markDirty == nullptr || screen.GetHandle() == nullptr) return;
  markDirty(targetOf(screen.GetHandle()));
}
