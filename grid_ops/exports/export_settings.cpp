#include "grid_ops/exports/export_settings.h"

#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <type_traits>

#define SI_NO_CONVERSION   // bytes in, bytes out
#define SI_IMPLEMENTATION  // Debian's header lacks the function bodies; they are in a separate library.
#include <SimpleIni.h>

#include "foundations/text_tools.h"
#include "platform/files.h"

namespace fs = std::filesystem;

namespace {

struct Setting {
  const char* Section;
  const char* Key;
};
constexpr Setting kExchangeFormat{"TRADECSV", "ExchangeFormatCSV"};
constexpr Setting kTradePath{"PATH", "Trade"};

// SimpleIni drops comments after the last entry. This section keeps them while the file is in memory.
constexpr std::string_view kEndSection = "[\x01]";

class ConfigFile {
 public:
  explicit ConfigFile(fs::path path) : Path(std::move(path)), Text(Read(Path)) {
    Ini.SetMultiKey(true);
    Ini.SetSpaces(false);
    if (Text) Ini.LoadData(*Text + "\n" + std::string(kEndSection) + "\n");
  }

  // Without a pair of quotes around it, as the Windows functions return it.
  std::string Value(const Setting& setting) const {
    const std::string value = Ini.GetValue(setting.Section, setting.Key, "");
    const bool quoted = value.size() > 1 && value.front() == value.back() && (value[0] == '"' || value[0] == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
  }

  void Write(const Setting& setting, const std::string& value) {
    if (!Text || Text->find('\0') != std::string::npos) return;
    Ini.SetValue(setting.Section, setting.Key, value.c_str(), nullptr, true);
    std::string text;
    if (Ini.Save(text) < 0) return;
    unsigned long ignored = 0;
    ReplaceFileContent(Path, FileForm(text), ignored);
  }

 private:
  // Empty for a missing file; nothing for one that cannot be read and written.
  static std::optional<std::string> Read(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error) && !error) return std::string();
    std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
    if (!file.is_open()) return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

  // Without the end section, with CR LF like the Windows functions, and with single empty lines.
  static std::string FileForm(const std::string& text) {
    std::string lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
      if (line.ends_with('\r')) line.pop_back();
      const bool repeats = line.empty() && (lines.empty() || lines.ends_with("\r\n\r\n"));
      if (line != kEndSection && !repeats) lines += line + "\r\n";
    }
    if (lines.ends_with("\r\n\r\n")) lines.resize(lines.size() - 2);
    return lines;
  }

  fs::path Path;
  std::optional<std::string> Text;
  CSimpleIniA Ini;
};

}  // namespace

void ReadExchangeFormatFlag(const fs::path& configFile, bool& flag) {
  ConfigFile config(configFile);
  const std::string value = config.Value(kExchangeFormat);
  if (value == "TRUE") flag = true;
  if (!value.empty()) return;
  config.Write(kExchangeFormat, "FALSE");
  flag = false;
}

void SaveTradePath(const fs::path& configFile, std::string& newFolder, std::string& rememberedFolder) {
  newFolder = ToUpperText(newFolder);
  rememberedFolder = ToUpperText(rememberedFolder);
  if (newFolder == rememberedFolder) return;
  ConfigFile(configFile).Write(kTradePath, newFolder);
  rememberedFolder = newFolder;
}

std::string FolderText(const fs::path& folder) {
  const auto toBytes = [](const auto& text) -> std::string {
    if constexpr (std::is_same_v<std::decay_t<decltype(text)>, std::string>)
      return text;
    else
      return WideToNarrow(text);
  };
  return toBytes(folder.native());
}
