// The console that a program writes to. Main thread, at the start.
#pragma once

// A program with windows that the desktop has started stands in a console made for it alone: closes that. True when it
// did: nothing that is written can be seen from then on. A console that was there before stays, as does everything on a
// platform without consoles of programs.
bool CloseOwnConsole() noexcept;
