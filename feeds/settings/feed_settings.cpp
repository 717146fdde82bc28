#include "feeds/settings/feed_settings.h"

#include <algorithm>
#include <fstream>
#include <map>

#include "feeds/common/feed_report.h"
#include "feeds/settings/setting_values.h"
#include "foundations/text_tools.h"

namespace {

constexpr std::size_t kMostBytes = 1 << 20;

struct GivenValue {
  std::uint64_t Line = 0;
  std::string Text;
};

// What the file gives for each key, and the first line of each section.
struct GivenSettings {
  std::map<const SettingKey*, GivenValue> Values;
  std::map<std::string, std::uint64_t> Sections;
};

std::string WholeFile(const std::filesystem::path& file) {
  std::error_code ignored;
  std::ifstream stream(file, std::ios::binary);
  if (!stream || !std::filesystem::is_regular_file(file, ignored))
    throw FeedError("Cannot read " + file.string() + ".");
  std::string text(kMostBytes + 1, '\0');
  text.resize(static_cast<std::size_t>(stream.read(text.data(), kMostBytes + 1).gcount()));
  if (text.size() > kMostBytes) throw FeedError(file.string() + " is too big for a settings file.");
  return text;
}

std::string_view Trimmed(std::string_view text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool IsSection(std::string_view name) {
  return std::ranges::any_of(SettingKeys(), [name](const SettingKey& key) { return name == key.Section; });
}

const SettingKey* FindKey(std::string_view section, std::string_view name) {
  const auto keys = SettingKeys();
  const auto found =
      std::ranges::find_if(keys, [&](const SettingKey& key) { return section == key.Section && name == key.Name; });
  return found == keys.end() ? nullptr : &*found;
}

// Takes the lines one after the other.
class LineReader {
 public:
  LineReader(GivenSettings& given, std::vector<SettingsMistake>& mistakes) : Given(given), Mistakes(mistakes) {}

  void Take(std::string_view line) {
    ++Line;
    line = Trimmed(line);
    if (line.empty() || line.front() == '#' || line.front() == ';') return;
    if (std::ranges::any_of(line, [](unsigned char c) { return c < ' ' && c != '\t'; }))
      return Tell("control characters are not allowed");
    if (line.front() == '[') return TakeSection(line);
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return Tell("expected \"key = value\", [section] or # comment");
    TakeValue(Trimmed(line.substr(0, equals)), Trimmed(line.substr(equals + 1)));
  }

 private:
  void Tell(std::string text) { Mistakes.push_back({Line, std::move(text)}); }

  void TakeSection(std::string_view line) {
    Section = line.back() == ']' ? Trimmed(line.substr(1, line.size() - 2)) : std::string_view();
    IsKnown = IsSection(Section);
    if (!IsKnown) return Tell("unknown section " + std::string(line));
    Given.Sections.emplace(Section, Line);
  }
  void TakeValue(std::string_view name, std::string_view value) {
    if (Section.empty() && !IsKnown) return Tell("a key before the first [section]");
    if (!IsKnown) return;  // the section has been told
    const SettingKey* key = FindKey(Section, name);
    if (!key) return Tell("unknown key " + std::string(name) + " in [" + Section + "]");
    const auto [place, isNew] = Given.Values.try_emplace(key, GivenValue{Line, std::string(value)});
    if (!isNew) Tell(std::string(name) + " stands in line " + std::to_string(place->second.Line) + " already");
  }

  GivenSettings& Given;
  std::vector<SettingsMistake>& Mistakes;
  std::uint64_t Line = 0;
  std::string Section;
  bool IsKnown = false;
};

// Values that do not go together. Each is told at the line of its first key.
struct Combination {
  const char* Section;
  const char* Name;                  // if this has a value,
  const char* Other;                 // that one of the same section must have one (or, if excluded, none),
  const char* OtherValue = nullptr;  // or this one
};
constexpr Combination kNeeded[] = {
    {"tls", "host", "use", "yes"},          {"tls", "authorities", "use", "yes"}, {"tls", "certificate", "use", "yes"},
    {"tls", "certificate", "key"},          {"tls", "key", "certificate"},        {"log", "user", "servers"},
    {"log", "credentials_file", "servers"}, {"log", "authorities", "servers"},    {"log", "user", "password_file"},
    {"log", "password_file", "user"},       {"session", "start_day", "end_day"},  {"session", "end_day", "start_day"},
};
constexpr Combination kExcluded[] = {{"log", "credentials_file", "user"}};

class SettingsChecker {
 public:
  SettingsChecker(const GivenSettings& given, std::vector<SettingsMistake>& mistakes)
      : Given(given), Mistakes(mistakes) {}

  void SetAll(const std::filesystem::path& folder, FeedSettings& settings) {
    for (const SettingKey& key : SettingKeys()) {
      const std::string text = TextOf(key);
      if (text.empty() && key.IsRequired) Tell(LineOf(key), std::string(key.Name) + " is missing");
      if (text.empty()) continue;
      const std::string reason = SetValue(key, text, folder, settings);
      if (!reason.empty()) Tell(LineOf(key), std::string(key.Name) + ": " + reason);
    }
  }
  void CheckCombinations() {
    for (const Combination& pair : kNeeded) {
      const std::string other = TextOf(*FindKey(pair.Section, pair.Other));
      const bool fits = pair.OtherValue ? other == pair.OtherValue : !other.empty();
      if (IsGiven(pair) && !fits)
        Tell(LineOf(*FindKey(pair.Section, pair.Name)),
             std::string(pair.Name) + " needs " + pair.Other +
                 (pair.OtherValue ? std::string(" = ") + pair.OtherValue : ""));
    }
    for (const Combination& pair : kExcluded)
      if (IsGiven(pair) && !TextOf(*FindKey(pair.Section, pair.Other)).empty())
        Tell(LineOf(*FindKey(pair.Section, pair.Name)), std::string("either ") + pair.Name + " or " + pair.Other);
  }

 private:
  bool IsGiven(const Combination& pair) const { return !TextOf(*FindKey(pair.Section, pair.Name)).empty(); }
  std::string TextOf(const SettingKey& key) const {
    const auto found = Given.Values.find(&key);
    return found == Given.Values.end() || found->second.Text.empty() ? key.Default : found->second.Text;
  }
  // That of the section if the key does not stand there.
  std::uint64_t LineOf(const SettingKey& key) const {
    const auto found = Given.Values.find(&key);
    if (found != Given.Values.end()) return found->second.Line;
    const auto section = Given.Sections.find(key.Section);
    return section == Given.Sections.end() ? 0 : section->second;
  }
  void Tell(std::uint64_t line, std::string text) { Mistakes.push_back({line, std::move(text)}); }

  const GivenSettings& Given;
  std::vector<SettingsMistake>& Mistakes;
};

}  // namespace

FeedSettings ReadFeedSettings(const std::filesystem::path& file, std::vector<SettingsMistake>& mistakes) {
  const std::string text = WholeFile(file);
  GivenSettings given;
  LineReader lines(given, mistakes);
  for (std::string_view rest = WithoutByteOrderMark(text); !rest.empty();) lines.Take(TakeLine(rest));

  FeedSettings settings;
  SettingsChecker checker(given, mistakes);
  checker.SetAll(std::filesystem::absolute(file).parent_path(), settings);
  checker.CheckCombinations();
  std::ranges::stable_sort(mistakes, {}, &SettingsMistake::Line);
  return settings;
}

std::string SampleFeedSettings() {
  std::string sample = "# A FIX drop copy session. Fill in what has no value in [session]; everything else may stay.\n";
  std::string_view section;
  for (const SettingKey& key : SettingKeys()) {
    if (section != key.Section) sample += "\n[" + std::string(section = key.Section) + "]\n";
    for (std::string_view rest = key.Comment; !rest.empty();) sample += "# " + std::string(TakeLine(rest)) + "\n";
    sample += std::string(key.Name) + " =" + (*key.Default ? " " : "") + key.Default + "\n";
  }
  return sample;
}
