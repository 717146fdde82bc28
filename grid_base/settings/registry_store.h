// RegistryStore: the settings that the process keeps between runs, one tree in one file, opened as registry objects.
// GridFont: the font of a grid as settings store it, a block of 92 bytes, the same on both platforms.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "grid_base/settings/registry.h"
#include "grid_base/settings/settings_tree.h"

// All handles see a write at once. The file has the old content or the new, never a part. A file that cannot be read
// whole is copied to a free name before it is replaced.
//
// One tree, read when the store is made and written by ReplaceFileContent when the last handle that may write is
// released and something has changed: a save of many parts writes once. Handles keep the store alive.
class RegistryStore : public std::enable_shared_from_this<RegistryStore> {
 public:
  static std::shared_ptr<RegistryStore> Make(const std::filesystem::path& file);

  // Settings with the two flags set and no open path. Throws only std::bad_alloc.
  std::unique_ptr<CQORPRegistry> Open(int administrator, int readOnly);

  // Writes changes to the file now. False on failure, which is reported once until a save succeeds; the next save tries
  // again.
  bool Save() noexcept;

 private:
  class Handle;
  explicit RegistryStore(std::filesystem::path file) : File(std::move(file)) {}
  void Load();
  bool KeepDamagedFile(unsigned long& errorNumber);
  void Report(const char* what, unsigned long errorNumber, unsigned line) const noexcept;

  std::filesystem::path File;
  std::shared_ptr<SettingsTree> Tree = std::make_shared<SettingsTree>();
  int WritingHandles = 0;
  bool Damaged = false;
  bool FailureTold = false;
};

// The process's one store.
class CQORPRegistrySP {
 public:
  static constexpr const char* kFileName = "TradeBookSettings.xml";

  // Sets the folder of the file; only the first call counts, before the first Create. Default: the current folder.
  static void UseFolder(const std::filesystem::path& folder);
  static std::unique_ptr<CQORPRegistry> Create(int administrator, int readOnly);
  static bool Save() noexcept;
};

// The block, little-endian, in stored order.
struct GridFont {
  std::int32_t Height = 0;  // in pixels; negative: of the characters without the space above them
  std::int32_t Width = 0;
  std::int32_t Escapement = 0;  // tenths of a degree, as Orientation
  std::int32_t Orientation = 0;
  std::int32_t Weight = 0;  // 400 normal, 700 bold
  std::uint8_t Italic = 0;
  std::uint8_t Underline = 0;
  std::uint8_t StrikeOut = 0;
  std::uint8_t CharSet = 0;
  std::uint8_t OutPrecision = 0;
  std::uint8_t ClipPrecision = 0;
  std::uint8_t Quality = 0;
  std::uint8_t PitchAndFamily = 0;
  char16_t FaceName[32] = {};  // ends with a NUL
};
static_assert(sizeof(GridFont) == 92);

// Nothing if there are too few bytes for a font; more bytes are ignored.
std::optional<GridFont> FontFromBytes(std::span<const std::uint8_t> bytes);
bool WriteFont(CQORPRegistry& settings, const GridFont& font);

// Cuts a name that is too long for the block.
void SetFaceName(GridFont& font, std::wstring_view name);

// The font stored as "Font" in the section; nothing if the section has no font. Without the section, the current font
// in bold "MS Sans Serif". The second form reads the process's store.
std::optional<GridFont> LoadGridFont(CQORPRegistry& settings, const std::wstring& section, GridFont currentFont);
std::optional<GridFont> LoadGridFont(const std::wstring& section, const GridFont& currentFont);
