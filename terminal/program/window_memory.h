// WindowMemory: what the terminal's windows keep from one start to the next, in a file of the working folder: where the
// frame stands, how the market watch's columns lie and which day was played. The places of bars are kept by the bars
// themselves in the same file.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "grid_base/settings/registry_store.h"
#include "terminal/common/run_files.h"

struct FramePlace {
  SettingsRectangle Rectangle;  // of the screen, when it is not maximized
  bool Maximized = false;
};

struct ColumnPlace {
  std::wstring Title;
  int WidthPx = 0;
  bool operator==(const ColumnPlace&) const = default;
};

struct WatchPlace {
  std::vector<ColumnPlace> Columns;  // in the order of the screen
  std::optional<std::wstring> SortColumn;
  bool Rising = true;
};

// Promises: what was not stored whole, or makes no sense, reads as nothing, and the defaults hold. A file that cannot
// be read at all is kept beside under ".damaged".
class WindowMemory {
 public:
  static constexpr const char* kFileName = "TerminalWindows.xml";

  explicit WindowMemory(const std::filesystem::path& folder) : Store(RegistryStore::Make(folder / kFileName)) {}

  std::optional<FramePlace> LoadFrame();
  std::optional<WatchPlace> LoadWatch();
  // The file of the day that was played last; nothing for the sample.
  std::optional<std::filesystem::path> LoadDay();
  void SaveFrame(const FramePlace& place);
  void SaveWatch(const WatchPlace& place);
  void SaveDay(const RunFiles& files);
  // For the bars.
  std::unique_ptr<CQORPRegistry> Open() { return Store->Open(0, 0); }
  // Writes the file; false on failure.
  bool Write() noexcept { return Store->Save(); }

 private:
  std::shared_ptr<RegistryStore> Store;
};
