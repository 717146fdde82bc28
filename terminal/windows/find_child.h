// FindChild: the first window below another one that is of a class and fits a condition, depth first. Used on the
// calling thread of the windows only.
#pragma once

#include <wx/window.h>

// Null for none.
template <typename Control, typename Fits>
Control* FindChild(const wxWindow& window, Fits fits) {
  for (wxWindow* child : window.GetChildren()) {
    auto* control = dynamic_cast<Control*>(child);
    if (control != nullptr && fits(*control)) return control;
    if (Control* below = FindChild<Control>(*child, fits)) return below;
  }
  return nullptr;
}
