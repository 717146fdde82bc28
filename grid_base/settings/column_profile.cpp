#include "grid_base/settings/column_profile.h"

#include <algorithm>

#include "foundations/paths.h"
#include "platform/locale.h"

namespace {

struct StoredNumber {
  const wchar_t* Key;
  std::int32_t ColumnState::*Field;
};

// In the order of the file, after the header.
constexpr StoredNumber kStoredNumbers[] = {
    {L"Width", &ColumnState::Width}, {L"Visible", &ColumnState::Visible}, {L"Align", &ColumnState::Align},
    {L"Sort", &ColumnState::Sort},   {L"Locked", &ColumnState::Locked},   {L"Order", &ColumnState::Order},
    {L"Group", &ColumnState::Group},
};

constexpr const wchar_t* kHeaderKey = L"Header";
constexpr const wchar_t* kMultipleSortKey = L"IsMultipleSort";
constexpr std::int32_t kLargestWidth = 2048;
constexpr std::int32_t kLastAlignment = 2;

}  // namespace

std::optional<bool> SortsAscending(const ColumnState& state) noexcept {
  if (state.Sort != 1 && state.Sort != -1) return std::nullopt;
  return state.Sort == 1;
}

ColumnProfile::ColumnProfile(std::string gridName, std::wstring profileName, std::filesystem::path workingFolder)
    : GridName(std::move(gridName)), WorkingFolder(std::move(workingFolder)) {
  Settings.UserRoot().Name = std::move(profileName);
}

std::wstring ColumnProfile::ColumnPath(const std::string& key) const {
  return CodePageToWide(GridName) + L'\\' + CodePageToWide(key);
}

std::filesystem::path ColumnProfile::ProfileFile() const {
  return BuildFolderPath("ColumnProfile\\" + GridName, "ColumnProfile.xml", WorkingFolder);
}

void ColumnProfile::LoadColumnProfileFile() {
  Settings.LoadFromFile(ProfileFile());
}
bool ColumnProfile::SaveColumnProfileFile() const {
  return Settings.SaveToFile(ProfileFile());
}

std::int32_t ColumnProfile::LoadMultipleSort() {
  std::int32_t multipleSort = 1;
  Settings.OpenPath(CodePageToWide(GridName));
  Settings.Read(kMultipleSortKey, multipleSort);
  return multipleSort;
}

void ColumnProfile::SaveMultipleSort(bool multipleSort) {
  Settings.CreatePath(CodePageToWide(GridName));
  Settings.Write(kMultipleSortKey, std::int32_t{multipleSort});
}

ColumnState ColumnProfile::StoredState(const NewColumn& column) {
  ColumnState state{.Header = column.Header, .Width = column.Width, .Visible = column.Visible, .Align = column.Align};
  if (!Settings.OpenPath(ColumnPath(column.Key))) return state;
  Settings.Read(kHeaderKey, state.Header);
  for (const StoredNumber& number : kStoredNumbers) Settings.Read(number.Key, state.*number.Field);
  if (state.Width < 1 || state.Width > kLargestWidth) state.Width = column.Width;
  if (state.Align < 0 || state.Align > kLastAlignment) state.Align = column.Align;
  if (state.Header.empty()) state.Header = column.Header;
  return state;
}

ColumnState ColumnProfile::InsertProfiledColumn(const NewColumn& column, int index) {
  ColumnState state = StoredState(column);
  if (state.Visible != 0 && state.Order >= 0) Orders[state.Order] = index;
  if (state.Group >= 0) Groups[state.Group] = index;
  ColumnTable[NextColumn++] = {GridName,    column.Key,    state.Header, column.Width,
                               state.Align, state.Visible, state.Sort,   state.Locked};
  return state;
}

void ColumnProfile::SaveColumnState(const std::string& key, const ColumnState& state) {
  if (!Settings.CreatePath(ColumnPath(key))) return;
  Settings.Write(kHeaderKey, state.Header);
  for (const StoredNumber& number : kStoredNumbers) Settings.Write(number.Key, state.*number.Field);
}

// Ignores places and columns beyond the count.
std::vector<int> ColumnProfile::DisplayOrder(int columnCount) const {
  std::vector<int> columns;
  for (const auto& [order, column] : Orders)
    if (order < columnCount && column < columnCount) columns.push_back(column);
  return columns;
}

std::vector<ColumnReset> ColumnProfile::ResetColumns(int columnCount) const {
  std::vector<ColumnReset> resets(static_cast<std::size_t>(std::max(columnCount, 0)));
  for (const auto& [column, defaults] : ColumnTable)
    if (column < columnCount && defaults.Visible != 0)
      resets[static_cast<std::size_t>(column)] = {true, defaults.Width};
  return resets;
}
