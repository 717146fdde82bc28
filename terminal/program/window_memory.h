// WindowMemory: the file of the working folder that keeps the place of the frame, the columns of the lists, how
// positions are counted, the last day and the latest feeds. Bars store their places in it themselves.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "grid_base/settings/registry_store.h"
#include "terminal/day/day_input.h"
#include "terminal/positions/position_table.h"

struct FramePlace {
  SettingsRectangle Rectangle;  // of the screen, when it is not maximized
  bool Maximized = false;
};

struct ColumnPlace {
  std::wstring Title;
  int WidthPx = 0;
  std::wstring Filter{};
  bool operator==(const ColumnPlace&) const = default;
};

// The state of one of the terminal's lists.
struct ListPlace {
  std::vector<ColumnPlace> Columns;  // in the order of the screen
  std::optional<std::wstring> SortColumn;
  bool Rising = true;
  bool FilterShown = false;
};

// Incomplete or impossible values read as nothing. A file that cannot be read is kept beside under ".damaged".
class WindowMemory {
 public:
  static constexpr const char* kFileName = "TerminalWindows.xml";

  explicit WindowMemory(const std::filesystem::path& folder);

  // Nothing has been remembered in that folder before this run.
  bool IsNew() const noexcept { return FileIsNew; }

  std::optional<FramePlace> LoadFrame();
  // At first by security, at average cost.
  PositionSettings LoadPositions();
  // Each list has a section of the file.
  std::optional<ListPlace> LoadList(const std::wstring& section);
  static constexpr std::size_t kMostFeeds = 10;

  // The last day; nothing for the sample.
  std::optional<DaySpec> LoadDay();
  // The feeds that were connected, the latest first.
  std::vector<DaySpec> LoadFeeds();
  void SaveFrame(const FramePlace& place);
  void SavePositions(const PositionSettings& positions);
  void SaveList(const std::wstring& section, const ListPlace& place);
  void SaveDay(const RunFiles& files);
  // Puts it before the others.
  void SaveFeed(const DaySpec& feed);
  // For the bars.
  std::unique_ptr<CQORPRegistry> Open() { return Store->Open(0, 0); }
  // Writes the file; false on failure.
  bool Write() noexcept { return Store->Save(); }

 private:
  std::shared_ptr<RegistryStore> Store;
  bool FileIsNew;
};
