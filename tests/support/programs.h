// Runs of built programs by the system's shell.
#pragma once

#include <cstdlib>

#include "platform/modules.h"
#include "tests/support/files.h"

inline constexpr bool kWindows = std::filesystem::path::preferred_separator == '\\';

inline std::string Quoted(std::filesystem::path path) {
  return '"' + path.make_preferred().string() + '"';
}
// A built program for a command: beside the tests, or under a path from there.
inline std::string BuiltProgram(const std::string& name) {
  return Quoted(ProgramFolder() / (kWindows ? name + ".exe" : name));
}
// What the shell returns, which takes one pair of quotes off on Windows.
inline int RunCommand(const std::string& command) {
  return std::system((kWindows ? '"' + command + '"' : command).c_str());
}
