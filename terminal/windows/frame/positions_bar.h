// PositionsBar: the bar with the positions of the day and the line of their sums.
#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>

#include <functional>
#include <vector>

#include "terminal/positions/position_list.h"
#include "terminal/windows/frame/list_grid.h"
#include "terminal/windows/frame/terminal_bars.h"

class PositionsGrid : public ListGrid {
 public:
  // The rows must outlive the grid.
  explicit PositionsGrid(PositionList& rows);
  bool Create(wxWindow* parent, int id) override;

  // Of the current row; null for none.
  const LedgerSecurity* Selected() const;
  void Use(const PositionSettings& settings);
  PositionSums ShownSums() const;

  // Called when other rows are shown.
  std::function<void()> RowsChanged;

  std::span<const CQORPMenuItem> ContextMenu() const override;
  bool PreTranslateMessage(wxKeyEvent& event) override;
  void OnFilterBarChanged(int column, const std::wstring& text) override;
  void OnFilterBarClearAll() override;

 private:
  enum OwnCommand : int { kByClient = kFirstOwnCommand, kMethod };
  void Dress(ListRow row, std::size_t column, CQORPGridCell& cell) const override;
  void RunOwnCommand(int id) override;
  void TellRowsChanged();

  PositionList& Positions;
};

// Names and values beside each other, which a narrow line cuts off: the tool tip has all. A value is written when it
// changes.
class PositionSumsLine : public wxPanel {
 public:
  bool Create(wxWindow* parent);
  void Show(const PositionSums& sums);
  using wxPanel::Show;
  std::wstring Text() const;

 private:
  void Arrange();

  std::vector<wxStaticText*> Values;  // child windows
};

class PositionsBar : public ListBar {
 public:
  PositionsBar() : ListBar(L"PositionsBar", L"Positions") {}
  // The rows must outlive the bar. False when no window could be made. opened is called for Enter or a double click on
  // a row.
  bool Create(CQORPDockingManager& manager, std::uint32_t id, PositionList& rows, std::function<void()> opened);
  PositionsGrid& Grid() const noexcept { return *Shown; }
  PositionSumsLine& Sums() const noexcept { return *Line; }

  void Save(WindowMemory& memory) override;
  void Restore(WindowMemory& memory) override;
  void ShowChanges() override;

 private:
  void PlaceFirst() override;  // a tab, hidden
  void ShowSums();

  PositionList* Positions = nullptr;
  std::uint64_t SummedVersion = 0;
  PositionsGrid* Shown = nullptr;    // a child window
  PositionSumsLine* Line = nullptr;  // a child window
};
