// CFieldChoose: the dialog of "Field Choose", with a list of visible and one of hidden columns, and buttons that move a
// column. The grid changes at once.
#pragma once

#include <optional>

#include "grid_base/windows/field_order.h"
#include "toolkit/dialogs/controls.h"
#include "toolkit/dialogs/dialog.h"

class CVELDSGridCtrl;

class CFieldChoose : public CQORPDialog {
 public:
  explicit CFieldChoose(CVELDSGridCtrl& grid) : Grid(grid) {}
  // Makes the window for DoModal over the grid; false if it could not be made.
  bool CreateOverGrid();

  // Restores the order of the columns.
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
