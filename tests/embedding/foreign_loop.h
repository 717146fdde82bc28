// A program with its own window and main loop, without wxWidgets: the loop of GTK on Linux, a message loop on Windows.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

// Takes the display away; false if the platform always has one.
bool HideDisplay();
void ShowDisplay();

// Opens the window of the program; false without a display.
bool OpenForeignWindow();
// Whether the program's window takes input; nothing if the system itself keeps input from it.
std::optional<bool> ForeignWindowTakesInput();
// Runs the loop of the program and calls tick every few milliseconds until it returns false.
void RunForeignLoop(const std::function<bool()>& tick);
// True if a top-level window of the process with that title, in ASCII, is on the screen.
bool ShowsWindow(const std::string& title);
// True if the process has loaded that module.
bool HasLoaded(const std::filesystem::path& module);

// Runs the loop until the condition holds; false after many rounds.
inline bool TickUntil(const std::function<bool()>& condition) {
  constexpr int kMostTicks = 2000;
  bool holds = false;
  int ticks = 0;
  RunForeignLoop([&] { return !(holds = condition()) && ++ticks < kMostTicks; });
  return holds;
}

// Some rounds of the loop.
inline void Tick() {
  int ticks = 0;
  TickUntil([&ticks] { return ++ticks == 20; });
}
