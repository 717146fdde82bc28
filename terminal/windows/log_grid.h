// CLogGrid: the rows of the message log: filtered by the fields under its headers, copied and saved by its menu. Not
// the log: terminal/message_log.h. The main thread only.
#pragma once

#include <string>
#include <vector>

#include "terminal/message_log.h"
#include "toolkit/grid_ctrl.h"

class CLogGrid : public CQORPGridCtrl {
 public:
  explicit CLogGrid(CMessageLog& log) : Log(log) {}
  bool Create(wxWindow* parent, int id) override;

  // Takes what has come in since; called at each beat while the bar is shown.
  void ShowChanges();

  // Empty for a row that is not there.
  std::string CellText(int row, LogColumn column) const;

  void OnFilterBarChanged(int column, const std::wstring& text) override;
  void OnFilterBarClearAll() override;
  void OnShowContextMenu(const wxPoint& point) override;
  std::span<const CQORPMenuItem> ContextMenu() const override;
  bool PreTranslateMessage(wxKeyEvent& event) override;

 private:
  bool ShowCell(int row, int column, CQORPGridCell& cell) const;
  bool IsWanted(const LoggedMessage& message) const;
  void Collect();
  void RunCommand(int id);
  void Save();

  CMessageLog& Log;
  std::vector<std::uint64_t> Shown;  // counts of the messages, the oldest first
  std::uint64_t Seen = 0;            // the newest that was looked at
};
