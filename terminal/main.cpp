#include <iostream>

#include "platform/module.h"
#include "terminal/program.h"

int main(int argc, char** argv) {
  return RunTerminal(CommandLineArguments(argc, argv), std::cout, std::cerr);
}
