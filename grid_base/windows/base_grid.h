// CVELDSGridCtrl: the base of every grid window: a column profile kept in ColumnProfile.xml, the commands on columns, a
// clipboard format of its own, and the keys that go with it.
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

// PrivateClipboard: records on the clipboard in the system's own format "VELD_CLIPBOARD": messages one behind the
// other, each with its length at byte 8.

// Cuts a block into its records: length at byte 8, ten bytes of header before the content. What claims to be longer
// than the rest of the block, or is shorter than a header, ends the walk. Pure.
void ForEachClipboardRecord(std::span<const std::uint8_t> block,
                            const std::function<void(std::span<const std::uint8_t>)>& take);

class PrivateClipboard {
 public:
  // Collects records for the next Commit.
  void Append(std::vector<std::uint8_t> bytes) { Collected.insert(Collected.end(), bytes.begin(), bytes.end()); }
  // Puts what was collected on the clipboard, beside nothing else, and forgets it, whether the clipboard took it or
  // not.
  void Commit();
  // The block on the clipboard; empty where there is none of this format.
  static std::vector<std::uint8_t> Take();

 private:
  std::vector<std::uint8_t> Collected;
};

class CQORPacketReader;
class CQORPProp;
class CQORPPropList;

// What every grid of a process shares.
struct GridHost {
  // The terminal's function of that name: who has the focus.
  std::function<void(void* window, bool closed)> ApplicationFocus;
};

class CVELDSGridCtrl : public CQORPGridCtrl {
 public:
  // The type code stands for the grid's name in titles: grid_types.h. The grid name is its node and folder, the
  // profile name the root of its file.
  CVELDSGridCtrl(int gridTypeCode, const std::string& gridName, const std::wstring& profileName, const GridHost& host);

  int GetGridType() const noexcept { return GridTypeCode; }
  // The process's current folder when the grid was made: for its profile and its files.
  const std::filesystem::path& GetWorkingFolder() const noexcept { return WorkingFolder; }
  // The columns as they were inserted, by index.
  const std::map<int, ColumnDefaults>& GetColumnTable() const noexcept { return Profile.Columns(); }

  // Inserts a column as it was last saved; columns come in index order, between LoadMultipleSort and ApplyColumnOrder.
  void InsertProfiledColumn(const NewColumn& column, int index);
  void LoadMultipleSort();
  void SaveMultipleSort() { Profile.SaveMultipleSort(IsMultipleSort()); }
  void ApplyColumnOrder();
  void SaveColumnState(const std::string& key, int column);
  void LoadColumnProfileFile() { Profile.LoadColumnProfileFile(); }
  bool SaveColumnProfileFile() const { return Profile.SaveColumnProfileFile(); }

  // The terminal's pane of properties: fills it, and takes over one that was changed there.
  virtual void PopulateProperties(CQORPPropList& /*list*/) {}
  virtual void ApplyProperties(CQORPProp& /*property*/) {}

  // Columns that were visible at creation come back with the width that the derived grid gave them, and lose their sort
  // mark; all others are hidden and keep theirs. The order on the screen stays.
  virtual void ResetColumns();
  // Runs the field chooser on this grid, which has the focus afterwards.
  virtual void ChooseFields();
  virtual void ShowAllColumns();
  virtual void RemoveAllColumns();
  virtual void SizeColumnsToFit() { SizeToFit(); }
  virtual void SaveColumnProfile() {}
  // Takes the row selection and every text of the filter bar away.
  virtual void ResetFilter();
  virtual void ToggleFilterBar();
  // The menu entry that toggles the filter bar says what it would do.
  virtual void UpdateFilterMenuText(wxUpdateUIEvent& event);
  // For the entries of commands that can always be had.
  virtual void EnableCommand(wxUpdateUIEvent& event);
  // Takes the sort marks off every column.
  virtual void RemoveSort();

  virtual void ClipboardAppend(std::vector<std::uint8_t> bytes) { Clipboard.Append(std::move(bytes)); }
  virtual void ClipboardCommit() { Clipboard.Commit(); }
  // Ctrl+C, and Ctrl+X with cut.
  virtual void CopyToClipboard(bool /*cut*/) {}
  // One record of the private format; the reader must be left at the end of its message.
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
