#include "terminal/windows/frame/log_grid.h"

#include <wx/menu.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <utility>

#include "platform/locale.h"
#include "terminal/common/errors.h"
#include "terminal/windows/frame/main_frame.h"
#include "toolkit/dialogs/dialog.h"

namespace {

constexpr int kWidthsPx[] = {70, 100, 90, 70, 150, 60, 900};
constexpr int kRight = 1;

enum LogCommand { kCopy = 1, kSave, kClear, kResetFilter };
constexpr CQORPMenuItem kMenu[] = {
    {CQORPMenuItem::Kind::Command, 0, kCopy, L"&Copy"},
    {CQORPMenuItem::Kind::Command, 0, kSave, L"&Save As..."},
    {CQORPMenuItem::Kind::Separator, 0},
    {CQORPMenuItem::Kind::Command, 0, kResetFilter, L"Reset &Filter"},
    {CQORPMenuItem::Kind::Command, 0, kClear, L"C&lear"},
};

bool HoldsSmall(const wxString& text, const std::wstring& piece) {
  return text.Lower().Contains(wxString(piece).Lower());
}

}  // namespace

bool LogGrid::Create(wxWindow* parent, int id) {
  if (!CQORPGridCtrl::Create(parent, id)) return false;
  NameForReaders(L"Messages");
  for (int column = 0; column < static_cast<int>(std::size(kLogTitles)); ++column) {
    InsertColumn(column, kLogTitles[column], FromDIP(kWidthsPx[column]));
    const auto kind = static_cast<LogColumn>(column);
    const bool isNumber = kind == LogColumn::Count || kind == LogColumn::Number || kind == LogColumn::Bytes;
    if (isNumber) GetColumnsInfo().SetColumnAlign(column, kRight);
  }
  EnableFilterBar(true, L"<all>");
  EnableVirtualMode([this](int row, int column, CQORPGridCell& cell) { return ShowCell(row, column, cell); });
  Bind(wxEVT_MENU, [this](wxCommandEvent& event) { RunCommand(event.GetId()); });
  return true;
}

// Empty for a message that has left the log.
std::string LogGrid::CellText(int row, LogColumn column) const {
  const std::size_t place = Shown.size() - 1 - static_cast<std::size_t>(row);
  if (row < 0 || place >= Shown.size()) return {};
  const std::uint64_t behind = Log.CountOfAll() - Shown[place];
  return behind < Log.Size() ? LogText(Log.At(static_cast<std::size_t>(behind)), column) : std::string();
}

bool LogGrid::ShowCell(int row, int column, CQORPGridCell& cell) const {
  if (column >= 0) cell.Text = CodePageToWide(CellText(row, static_cast<LogColumn>(column)));
  return true;
}

bool LogGrid::IsWanted(const LoggedMessage& message) const {
  for (int column = 0; column < GetColumnCount(); ++column) {
    const std::wstring wanted = GetFilterText(column);
    if (!wanted.empty() && !HoldsSmall(CodePageToWide(LogText(message, static_cast<LogColumn>(column))), wanted))
      return false;
  }
  return true;
}

void LogGrid::ShowChanges() {
  const std::uint64_t all = Log.CountOfAll();
  const std::size_t before = Shown.size();
  for (std::uint64_t count = std::max(Seen, all - Log.Size()) + 1; count <= all; ++count)
    if (IsWanted(Log.At(static_cast<std::size_t>(all - count)))) Shown.push_back(count);
  Seen = all;
  const std::size_t added = Shown.size() - before;
  const std::uint64_t oldest = all - Log.Size();
  std::erase_if(Shown, [oldest](std::uint64_t count) { return count <= oldest; });
  SetVirtualRows(static_cast<int>(Shown.size()), static_cast<int>(added));
}

void LogGrid::Collect() {
  Shown.clear();
  Seen = 0;
  SetVirtualRows(0);
  ShowChanges();
}

void LogGrid::OnFilterBarChanged(int, const std::wstring&) {
  Collect();
}
void LogGrid::OnFilterBarClearAll() {
  CQORPGridCtrl::OnFilterBarClearAll();
  Collect();
}

std::span<const CQORPMenuItem> LogGrid::ContextMenu() const {
  return kMenu;
}
void LogGrid::OnShowContextMenu(const wxPoint& point) {
  ShowContextMenu(*this, kMenu, point);
}

bool LogGrid::PreTranslateMessage(wxKeyEvent& event) {
  if (event.GetModifiers() != wxMOD_CONTROL) return false;
  if (event.GetKeyCode() == 'C') return Copy();
  if (event.GetKeyCode() != 'S') return false;
  Save();
  return true;
}

void LogGrid::RunCommand(int id) {
  switch (id) {
    case kCopy:
      Copy();
      return;
    case kSave:
      return Save();
    case kResetFilter:
      return OnFilterBarClearAll();
    case kClear:
      Log.Clear();
      return Collect();
    default:
      return;
  }
}

// Saves the shown messages, the oldest first.
void LogGrid::Save() {
  const FocusReturn focus(*this);
  const auto path = CQORPFileDialog(this, "messages.csv", L".csv", L"CSV (Comma delimited)(*.csv)").AskForPath();
  if (!path) return;
  OrShowFailure(this, [&] {
    std::vector<std::size_t> rows;
    for (const std::uint64_t count : Shown)
      if (Log.CountOfAll() - count < Log.Size()) rows.push_back(static_cast<std::size_t>(Log.CountOfAll() - count));
    std::ofstream file(*path, std::ios::binary | std::ios::trunc);
    WriteLog(file, Log, rows);
    file.close();
    if (!file) throw TerminalError(ExitCode::File, PathText(*path) + " cannot be written");
  });
}
