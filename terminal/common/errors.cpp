#include "terminal/common/errors.h"

#include <ostream>

std::string PathText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

void ThrowFileError(const std::filesystem::path& path, const std::string& what, std::error_code error) {
  const std::string reason = error ? error.message() : "the system gives no reason";
  throw TerminalError(ExitCode::File, PathText(path) + ": " + what + ": " + reason);
}

void ThrowFileError(const std::filesystem::path& path, const std::string& what, int errorNumber) {
  ThrowFileError(path, what, std::error_code(errorNumber, std::generic_category()));
}

bool BadLineReport::IsNew(const std::filesystem::path& file) {
  FileReports& reports = Files[file];
  if (++reports.Read <= reports.Given) return false;
  ++reports.Given;
  ++Reported;
  return true;
}

void BadLineReport::AtLine(const std::filesystem::path& file, std::uint64_t line, const std::string& reason) {
  if (IsNew(file)) Out << PathText(file) << ':' << line << ": " << reason << '\n';
}

void BadLineReport::InFile(const std::filesystem::path& file, const std::string& reason) {
  if (IsNew(file)) Out << PathText(file) << ": " << reason << '\n';
}

void BadLineReport::AtCommand(const std::filesystem::path& file, std::uint64_t line, const std::string& reason) {
  ++Failed;
  Out << PathText(file) << ':' << line << ": " << reason << '\n';
}

void BadLineReport::AtByte(const std::filesystem::path& file, std::uint64_t offset, const std::string& reason) {
  if (IsNew(file)) Out << PathText(file) << ": byte " << offset << ": " << reason << '\n';
}
