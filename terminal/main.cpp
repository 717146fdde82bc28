#include <iostream>

#include "platform/modules.h"
#include "terminal/program/program.h"
#include "terminal/windows/session/window_session.h"

int main(int argc, char** argv) {
  return RunTerminal(CommandLineArguments(argc, argv), PlayInWindows, std::cout, std::cerr);
}
