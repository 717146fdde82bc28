// What the rooms of the windows share: texts, child windows by class, and keys as wxWidgets numbers them.
#pragma once

#include <wx/accel.h>
#include <wx/window.h>

#include <string>

#include "terminal/script/key_press.h"

// Of UTF-8.
std::wstring Wide(const std::string& text);

// The first window below another one, depth first, that is of the class and fits; null for none.
template <typename Control, typename Fits>
Control* FindChild(const wxWindow& window, Fits fits) {
  for (wxWindow* child : window.GetChildren()) {
    auto* control = dynamic_cast<Control*>(child);
    if (control != nullptr && fits(*control)) return control;
    if (Control* below = FindChild<Control>(*child, fits)) return below;
  }
  return nullptr;
}

// The key code; 0 for a key that wxWidgets does not know.
int WxKeyCode(const KeyPress& key);
// The held keys as wxACCEL_ bits, which are those of wxMOD_ too.
int WxHeldKeys(const KeyPress& key);
