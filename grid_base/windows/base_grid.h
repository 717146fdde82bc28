// CVELDSGridCtrl: the base class of all grids, with a column profile in ColumnProfile.xml, column commands, and a
// private clipboard format with its keys.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "grid_base/settings/column_profile.h"
#include "toolkit/grid/grid_ctrl.h"

// Splits a clipboard block into its records. Each has a header of ten bytes with the length of the content at byte 8.
// Stops at a record that is shorter than a header or exceeds the block.
void ForEachClipboardRecord(std::span<const std::uint8_t> block,
                            const std::function<void(std::span<const std::uint8_t>)>& take);

// PrivateClipboard: consecutive records in the clipboard format "VELD_CLIPBOARD".
class PrivateClipboard {
 public:
  // Adds a record to the next Commit.
  void Append(std::vector<std::uint8_t> bytes) { Collected.insert(Collected.end(), bytes.begin(), bytes.end()); }
  // Replaces the clipboard data by the collected records and clears them, also if the clipboard is not available.
  void Commit();
  // The block on the clipboard; empty if it has no such format.
  static std::vector<std::uint8_t> Take();

 private:
  std::vector<std::uint8_t> Collected;
};

class CQORPacketReader;
class CQORPProp;
class CQORPPropList;

// Shared by all grids of a process.
struct GridHost {
  // The terminal's function of that name, which takes the focused window.
  std::function<void(void* window, bool closed)> ApplicationFocus;
};

class CVELDSGridCtrl : public CQORPGridCtrl {
 public:
  // GridTypeName gives the type code's name in titles. The grid name is its node and folder, the profile name the root
  // of its file.
  CVELDSGridCtrl(int gridTypeCode, const std::string& gridName, const std::wstring& profileName, const GridHost& host);

  int GetGridType() const noexcept { return GridTypeCode; }
  // The current folder of the process when the grid was made, for profile and files.
  const std::filesystem::path& GetWorkingFolder() const noexcept { return WorkingFolder; }
  // The inserted columns, by index.
  const std::map<int, ColumnDefaults>& GetColumnTable() const noexcept { return Profile.Columns(); }

  // Inserts a column as saved. Call in index order, between LoadMultipleSort and ApplyColumnOrder.
  void InsertProfiledColumn(const NewColumn& column, int index);
  void LoadMultipleSort();
  void SaveMultipleSort() { Profile.SaveMultipleSort(IsMultipleSort()); }
  void ApplyColumnOrder();
  void SaveColumnState(const std::string& key, int column);
  void LoadColumnProfileFile() { Profile.LoadColumnProfileFile(); }
  bool SaveColumnProfileFile() const { return Profile.SaveColumnProfileFile(); }

  // Fill the terminal's property pane, and apply a property that was changed there.
  virtual void PopulateProperties(CQORPPropList& /*list*/) {}
  virtual void ApplyProperties(CQORPProp& /*property*/) {}

  // Columns that were visible at creation get their default width and lose their sort mark; all others are hidden and
  // keep theirs. The order does not change.
  virtual void ResetColumns();
  // Runs the field chooser, then gives the focus to this grid.
  virtual void ChooseFields();
  virtual void ShowAllColumns();
  virtual void RemoveAllColumns();
  virtual void SizeColumnsToFit() { SizeToFit(); }
  virtual void SaveColumnProfile() {}
  // Clears the row selection and the filter bar.
  virtual void ResetFilter();
  virtual void ToggleFilterBar();
  // Sets the text of the menu item that toggles the filter bar.
  virtual void UpdateFilterMenuText(wxUpdateUIEvent& event);
  // For commands that are always enabled.
  virtual void EnableCommand(wxUpdateUIEvent& event);
  // Removes the sort marks of all columns.
  virtual void RemoveSort();

  virtual void ClipboardAppend(std::vector<std::uint8_t> bytes) { Clipboard.Append(std::move(bytes)); }
  virtual void ClipboardCommit() { Clipboard.Commit(); }
  // Ctrl+C, and Ctrl+X with cut.
  virtual void CopyToClipboard(bool /*cut*/) {}
  // Pastes one record of the private format. Must leave the reader at the end of its message.
  virtual void PasteRecord(CQORPacketReader& record);
  virtual void PasteFromClipboard();

  bool PreTranslateMessage(wxKeyEvent& event) override;
  void OnGridFocus() override;

 protected:
  const GridHost& Host;

 private:
  void ShowColumns(bool visible);

  int GridTypeCode;
  std::filesystem::path WorkingFolder;
  ColumnProfile Profile;
  PrivateClipboard Clipboard;
};
