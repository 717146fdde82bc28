// ColumnProfile: the columns of a grid between runs, in ColumnProfile.xml, and what follows from them: the state of an
// inserted column, the order of the columns, and what a reset restores.
//
//   root   := grid name without blanks:  column*  IsMultipleSort      in the order of the first save
//   column := key:  Header Width Visible Align Sort Locked Order Group
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "grid_base/settings/xml_settings.h"

// A column as shown, stored and restored.
struct ColumnState {
  std::wstring Header;
  std::int32_t Width = 0;    // in pixels, 1 to 2048; of a hidden column the width when it is shown
  std::int32_t Visible = 0;  // 0 is hidden
  std::int32_t Align = 0;    // 0, 1 or 2
  std::int32_t Sort = 0;     // 1 ascending, -1 descending, anything else unsorted
  std::int32_t Locked = 0;   // 0 is not locked
  std::int32_t Order = -1;   // place among the shown columns; -1 when hidden
  std::int32_t Group = -1;   // place among the columns grouped by; -1 when not grouped
};

// A column as the grid inserts it.
struct NewColumn {
  std::string Key;
  std::wstring Header;
  std::int32_t Width = 0;
  std::int32_t Align = 0;
  std::int32_t Visible = 0;
};

// An inserted column for a reset: as shown then, but with the grid's width. So a reset restores the grid's width and
// the profile's visibility.
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

// A column after a reset. A visible one gets the width and loses its sort mark; a hidden one keeps both.
struct ColumnReset {
  bool Visible = false;
  std::int32_t Width = 0;
};

// Whether the column is sorted ascending; nothing if it is unsorted.
std::optional<bool> SortsAscending(const ColumnState& state) noexcept;

class ColumnProfile {
 public:
  // The names of the grid and of the file's root. Reads no file.
  ColumnProfile(std::string gridName, std::wstring profileName, std::filesystem::path workingFolder);

  // <working folder>/ColumnProfile/<grid name>/ColumnProfile.xml; both create the folders. A missing or damaged file is
  // no failure: columns that it lacks keep the values of the grid.
  void LoadColumnProfileFile();
  bool SaveColumnProfileFile() const;

  // Whether sorting by several columns is on: 1 unless stored.
  std::int32_t LoadMultipleSort();
  void SaveMultipleSort(bool multipleSort);

  // The state that the grid sets: stored values replace the given ones. Requires columns in index order. A stored width
  // outside 1 to 2048, an empty header and an unknown alignment count as not stored.
  ColumnState InsertProfiledColumn(const NewColumn& column, int index);
  void SaveColumnState(const std::string& key, const ColumnState& state);

  // Before columns are inserted again.
  void ForgetOrder() { Orders.clear(); }
  // The columns with a stored place, in order.
  std::vector<int> DisplayOrder(int columnCount) const;
  // One entry per column; columns that were not inserted here are hidden.
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
  std::map<std::int32_t, int> Orders;  // stored place to visible column; the later of two equals wins
  std::map<std::int32_t, int> Groups;
  std::map<int, ColumnDefaults> ColumnTable;  // by the number of the insertion, the column's index
  int NextColumn = 0;
};
