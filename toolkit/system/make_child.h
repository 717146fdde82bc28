// MakeChild: makes an object that wxWidgets deletes, such as a child window, a sizer, a menu or clipboard data.
#pragma once

#include <memory>
#include <utility>

// The owner is the parent among the arguments, or whoever gets the object next: MakeChild<wxTextCtrl>(panel, wxID_ANY).
// A parent may be a pointer or a reference. A window that is created in two steps has no owner before its Create.
template <typename Child, typename... Arguments>
Child& MakeChild(Arguments&&... arguments) {
  return *std::make_unique<Child>(std::forward<Arguments>(arguments)...).release();
}
