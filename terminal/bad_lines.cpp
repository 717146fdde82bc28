#include "terminal/bad_lines.h"

#include <ostream>

#include "terminal/terminal_error.h"

bool CBadLines::IsNew(const std::filesystem::path& file) {
  FileReports& reports = Files[file];
  if (++reports.Read <= reports.Given) return false;
  ++reports.Given;
  ++Reported;
  return true;
}

void CBadLines::AtLine(const std::filesystem::path& file, std::uint64_t line, const std::string& reason) {
  if (IsNew(file)) Out << PathText(file) << ':' << line << ": " << reason << '\n';
}

void CBadLines::AtCommand(const std::filesystem::path& file, std::uint64_t line, const std::string& reason) {
  ++Failed;
  Out << PathText(file) << ':' << line << ": " << reason << '\n';
}

void CBadLines::AtByte(const std::filesystem::path& file, std::uint64_t offset, const std::string& reason) {
  if (IsNew(file)) Out << PathText(file) << ": byte " << offset << ": " << reason << '\n';
}
