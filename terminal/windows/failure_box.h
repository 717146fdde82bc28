// What a handler of an event does with a failure: it is said to the user, and the terminal goes on. The main thread
// only.
#pragma once

#include <exception>
#include <string>

#include "toolkit/frame.h"

// Modal; nothing while another of them is up.
void ShowFailure(wxWindow* parent, const std::string& sentence);
void ShowMessage(wxWindow* parent, const std::wstring& caption, const std::wstring& text);

// Runs the function; false, with the reason shown, when it threw.
template <typename Function>
bool OrShowFailure(wxWindow* parent, Function function) {
  try {
    function();
    return true;
  } catch (const std::exception& failure) {
    ShowFailure(parent, failure.what());
    return false;
  }
}
