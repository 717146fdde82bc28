// The gateway as a program, without main: every error ends here, as an exit code and a sentence.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

int RunGateway(const std::vector<std::filesystem::path>& arguments, std::ostream& out, std::ostream& errors);
