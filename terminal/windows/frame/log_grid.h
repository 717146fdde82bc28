// The grid of the message log.
#pragma once

#include <string>
#include <vector>

#include "terminal/link/message_log.h"
#include "toolkit/grid/grid_ctrl.h"

// Shows the message log with filter fields under its headers; its menu copies and saves.
class LogGrid : public CQORPGridCtrl {
 public:
  explicit LogGrid(MessageLog& log) : Log(log) {}
  bool Create(wxWindow* parent, int id) override;

  // Shows new messages; called at each beat while the bar is shown.
  void ShowChanges();

  // Empty for a row out of range.
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

  MessageLog& Log;
  std::vector<std::uint64_t> Shown;  // counts of the messages, the oldest first
  std::uint64_t Seen = 0;            // the newest that was looked at
};
