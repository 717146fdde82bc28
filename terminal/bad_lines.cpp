#include "terminal/bad_lines.h"

#include <ostream>

#include "terminal/terminal_error.h"

void CBadLines::AtLine(const std::filesystem::path& file, std::uint64_t line, const std::string& reason) {
  ++Reported;
  Out << PathText(file) << ':' << line << ": " << reason << '\n';
}

void CBadLines::AtByte(const std::filesystem::path& file, std::uint64_t offset, const std::string& reason) {
  ++Reported;
  Out << PathText(file) << ": byte " << offset << ": " << reason << '\n';
}
