#include <iostream>

#include "gateway/program.h"
#include "platform/modules.h"

int main(int argc, char** argv) {
  return RunGateway(CommandLineArguments(argc, argv), std::cout, std::cerr);
}
