#include "terminal/day/day_spec.h"

#include <algorithm>

#include "terminal/common/errors.h"

namespace {

constexpr const char* kLogSchemes[] = {"nats://", "tls://"};
constexpr std::string_view kFixScheme = "fix:";

bool IsLog(const std::string& text) {
  return std::ranges::any_of(kLogSchemes, [&text](const char* scheme) { return text.starts_with(scheme); });
}

std::filesystem::path FullPath(const std::filesystem::path& path) {
  return path.empty() ? path : std::filesystem::absolute(path);
}

}  // namespace

DaySpec::DaySpec(const std::filesystem::path& given, const std::filesystem::path& access) {
  const std::string text = PathText(given);
  if (IsLog(text)) {
    What = Kind::Log;
    Address = text;
    Access = FullPath(access);
  } else if (text.starts_with(kFixScheme)) {
    What = Kind::Fix;
    const std::string file = text.substr(kFixScheme.size());
    File = FullPath(std::u8string(file.begin(), file.end()));
  } else {
    File = FullPath(given);
  }
}

std::filesystem::path DaySpec::Given() const {
  switch (What) {
    case Kind::File:
      break;
    case Kind::Log:
      return Address;
    case Kind::Fix:
      const std::u8string file = File.u8string();
      return std::u8string(kFixScheme.begin(), kFixScheme.end()) + file;
  }
  return File;
}

std::string DaySpec::Name() const {
  return What == Kind::Log ? Address.substr(Address.rfind('/') + 1) : PathText(File.filename());
}
