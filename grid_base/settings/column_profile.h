// ColumnProfile: what a grid keeps of its columns between runs, in ColumnProfile.xml, and what follows from it: how a
// column is inserted, in which order the columns stand, what a reset brings back.
//
//   root   := grid name without blanks:  column*  IsMultipleSort      in the order in which they were first saved
//   column := key:  Header Width Visible Align Sort Locked Order Group
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "grid_base/settings/xml_settings.h"

// One column as it is shown, stored and restored.
struct ColumnState {
  std::wstring Header;
  std::int32_t Width = 0;    // in pixels, 1 to 2048; of a hidden column the one it has when it is shown
  std::int32_t Visible = 0;  // 0 is hidden
  std::int32_t Align = 0;    // 0, 1 or 2
  std::int32_t Sort = 0;     // 1 ascending, -1 descending, anything else unsorted
  std::int32_t Locked = 0;   // 0 is not locked
  std::int32_t Order = -1;   // place among the shown columns; -1 when hidden
  std::int32_t Group = -1;   // place among the columns grouped by; -1 when not grouped
};

// What the grid tells of a column when it inserts it.
struct NewColumn {
  std::string Key;
  std::wstring Header;
  std::int32_t Width = 0;
  std::int32_t Align = 0;
  std::int32_t Visible = 0;
};

// What is kept of an inserted column for a reset: as shown at its insertion, but the width as the grid gave it. So a
// reset returns to the grid's width and to the profile's visibility.
struct ColumnDefaults {
  std::string Grid;
  std::string Key;
  std::wstring Header;
  std::int32_t Width = 0;
  std::int32_t Align = 0;
  std::int32_t Visible = 0;
  std::int32_t Sort = 0;
  std::int32_t Locked = 0;
};

// A column after a reset. One that is visible takes the width and loses its sort mark; a hidden one keeps both.
struct ColumnReset {
  bool Visible = false;
  std::int32_t Width = 0;
};

// Whether the column is sorted ascending; nothing when its stored mark sorts it not at all.
std::optional<bool> SortsAscending(const ColumnState& state) noexcept;

class ColumnProfile {
 public:
  // The names of the grid and of the file's root. Reads no file.
  ColumnProfile(std::string gridName, std::wstring profileName, std::filesystem::path workingFolder);

  // <working folder>/ColumnProfile/<grid name>/ColumnProfile.xml; the folders are made by either. A file that is
  // missing or has a fault is no failure: the columns that it does not tell of keep what the grid gives them.
  void LoadColumnProfileFile();
  bool SaveColumnProfileFile() const;

  // Whether sorting by several columns is on: 1 unless stored.
  std::int32_t LoadMultipleSort();
  void SaveMultipleSort(bool multipleSort);

  // What the grid sets for the column: its stored state over the given one. Columns come in index order. A stored width
  // outside 1 to 2048, an empty header and an alignment that is none count as not stored.
  ColumnState InsertProfiledColumn(const NewColumn& column, int index);
  void SaveColumnState(const std::string& key, const ColumnState& state);

  // Before the columns are inserted: the order of columns inserted earlier counts no longer.
  void ForgetOrder() { Orders.clear(); }
  // The columns that have a stored place, to be put at places 0, 1, 2 and on.
  std::vector<int> DisplayOrder(int columnCount) const;
  // One entry for each column: columns never inserted through here come back hidden.
  std::vector<ColumnReset> ResetColumns(int columnCount) const;

  const std::map<int, ColumnDefaults>& Columns() const noexcept { return ColumnTable; }
  const std::map<std::int32_t, int>& GroupPlaces() const noexcept { return Groups; }

 private:
  std::wstring ColumnPath(const std::string& key) const;
  std::filesystem::path ProfileFile() const;
  ColumnState StoredState(const NewColumn& column);

  CVELDPXMLSettings Settings;
  std::string GridName;
  std::filesystem::path WorkingFolder;
  std::map<std::int32_t, int> Orders;  // stored place to column, visible columns only; the later of two equals wins
  std::map<std::int32_t, int> Groups;
  std::map<int, ColumnDefaults> ColumnTable;  // by the number of the insertion, which is the column's index
  int NextColumn = 0;
};
