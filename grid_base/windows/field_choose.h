// CFieldChoose: the dialog behind "Field Choose": a list of the columns on show, one of those that are not, and buttons
// that move a column. The grid behind it changes at once. What a command does to columns is FieldOrder's.
#pragma once

#include <optional>

#include "grid_base/windows/field_order.h"
#include "toolkit/dialogs/controls.h"
#include "toolkit/dialogs/dialog.h"

class CVELDSGridCtrl;

class CFieldChoose : public CQORPDialog {
 public:
  explicit CFieldChoose(CVELDSGridCtrl& grid) : Grid(grid) {}
  // Makes the window over the grid's, for DoModal; false when it could not be made.
  bool CreateOverGrid();

  // Restores the order that the columns had.
  void OnCancel() override;

 protected:
  void OnInitDialog() override;

 private:
  void MakeControls();
  wxSizer* MakeLists();
  wxSizer* MakeList(int id, const wchar_t* label, CQORPCheckListBox*& list);
  wxSizer* MakeMoveButtons();
  wxSizer* MakeEndButtons();
  void OnKey(wxKeyEvent& event);
  void Do(bool (FieldOrder::*command)());

  CVELDSGridCtrl& Grid;
  std::optional<FieldOrder> Order;
  // Child windows.
  CQORPCheckListBox* ShownList = nullptr;
  CQORPCheckListBox* HiddenList = nullptr;
  CQORPButton* OkButton = nullptr;
};
