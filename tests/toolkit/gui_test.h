// For tests with real windows: a main program that starts wxWidgets, a frame per test, an event pump, and mouse and key
// events. Without a display the program is skipped.
#pragma once

#include <gtest/gtest.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/image.h>

#include <functional>

// A new frame of 1200 x 700 for each test. An assertion of wxWidgets fails the test.
class GuiTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  wxFrame* Frame = nullptr;
};

// Bits for the held keys of Click, Drag and Press.
enum HeldKey { kNoKey = 0, kShift = 1, kControl = 2, kAlt = 4 };

// Processes all queued, pending and idle events, without waiting for new ones.
void Pump();
// Processes events until the condition holds; false after a long while.
bool PumpUntil(const std::function<bool()>& condition);
// Processes events until the window's frame, which must be new or raised, is active. Set the focus afterwards: the
// activation takes it.
void WaitForActivation(wxWindow& window);
// Repaints the window, which must be shown.
void PaintNow(wxWindow& window);

// The dialog that waits for its answer; null for none.
wxDialog* ModalDialog();

// Points are relative to the window.
void SendMouse(wxWindow& window, const wxPoint& point, int held, std::initializer_list<wxEventType> types);
// Send events to the window, then call Pump().
void Click(wxWindow& window, const wxPoint& point, int held = kNoKey);
void DoubleClick(wxWindow& window, const wxPoint& point);
void RightClick(wxWindow& window, const wxPoint& point);
// Presses at the first point, moves through the middle, releases at the last.
void Drag(wxWindow& window, const wxPoint& from, const wxPoint& to);
// A key as the system sends it: char hook, then key down, then char, until a handler takes it.
void Press(wxWindow& window, int keyCode, int held = kNoKey);

// True if the window gets the focus of the system; some displays need a window manager for that.
bool GiveRealFocus(wxWindow& window);

// The client area as painted now. Compare colours at a few places only: themes and fonts differ.
wxImage PictureOf(wxWindow& window);
wxColour ColourAt(const wxImage& picture, const wxPoint& place);

// Name and description of the window that screen readers say.
std::wstring SpokenName(wxWindow& window);
std::wstring SpokenDescription(wxWindow& window);
