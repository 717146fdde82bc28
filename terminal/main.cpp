#include <iostream>

#include "platform/module.h"
#include "terminal/program.h"
#include "terminal/windows/play_in_windows.h"

int main(int argc, char** argv) {
  return RunTerminal(CommandLineArguments(argc, argv), PlayInWindows, std::cout, std::cerr);
}
