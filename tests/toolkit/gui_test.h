// What tests with real windows share: a main program that starts wxWidgets, a frame for each test, events served until
// none is left, and mouse and keys sent to a window. Without a display every such test is skipped. Not what is tested.
// Used on the one thread of the tests.
#pragma once

#include <gtest/gtest.h>
#include <wx/frame.h>

#include <functional>

// A frame of 1200 x 700, shown anew for each test and gone after it. An assertion of wxWidgets fails the test.
class GuiTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  wxFrame* Frame = nullptr;
};

// Bits for the held keys of Click, Drag and Press.
enum HeldKey { kNoKey = 0, kShift = 1, kControl = 2, kAlt = 4 };

// Serves what waits, pending and idle events too. Does not wait for anything to come.
void Pump();
// Serves events until the condition holds; false when it did not in a long while.
bool PumpUntil(const std::function<bool()>& condition);
// Serves events until the window's frame, which must be new or raised, is the active one. A focus that is set before is
// lost again.
void WaitForActivation(wxWindow& window);
// Returns when the window, which must be shown, has been painted anew.
void PaintNow(wxWindow& window);

// Events put straight into the window, then Pump(). Points are within the window.
void Click(wxWindow& window, const wxPoint& point, int held = kNoKey);
void DoubleClick(wxWindow& window, const wxPoint& point);
void RightClick(wxWindow& window, const wxPoint& point);
// Press at the first point, move by way of the middle, release at the last.
void Drag(wxWindow& window, const wxPoint& from, const wxPoint& to, int held = kNoKey);
// A key as the system sends it: first to whoever hooks keys, then down, then, where nobody took it, as a character.
void Press(wxWindow& window, int keyCode, int held = kNoKey);

// The same through the display's own pointer and keyboard; the window must be shown and not covered.
void DragRealPointer(wxWindow& window, const wxPoint& from, const wxPoint& to);
// True once the window has the system's focus; needs a window manager on some displays.
bool GiveRealFocus(wxWindow& window);

// The window as painted, into a PNG file; for looking at, not for comparing.
bool SavePicture(wxWindow& window, const std::wstring& path);
