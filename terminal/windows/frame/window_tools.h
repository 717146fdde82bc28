// What the rooms of the windows share: texts, child windows by class, and what differs between window systems.
#pragma once

#include <wx/dc.h>
#include <wx/frame.h>
#include <wx/window.h>

#include <string>

// Of UTF-8.
inline std::wstring Wide(const std::string& text) {
  return wxString::FromUTF8(text).ToStdWstring();
}

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

// What differs between window systems.

// Call before wxWidgets starts. GTK prefers Wayland, where a program cannot place its windows. If an X server is
// reachable, this chooses it, unless the user has set GDK_BACKEND.
void ChooseWindowSystem();

// Call after wxWidgets has started. Hides complaints of the window system's libraries that are known to be harmless
// faults of theirs.
void DropKnownComplaints();

// Call once the frame has its menu bar. A window system that shows a frame without a size first gets the menu bar after
// that.
void HideMenuBarUntilShown(wxFrame& frame);

// Call before each copy from the screen; the window system may have kept an earlier one.
void ForgetScreenContent(wxDC& screen);
