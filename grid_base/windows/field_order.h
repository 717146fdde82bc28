// FieldOrder: the commands of the field chooser on its two lists and on the columns of the grid.
//
// The lists hold headers. A header means the first column of the column table that has it and suits the command, so of
// two columns with one header it is the first.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "grid_base/settings/column_profile.h"
#include "toolkit/model/columns_info.h"
#include "toolkit/model/dialog_parts.h"

class FieldOrder {
 public:
  using ColumnTable = std::map<int, ColumnDefaults>;  // by column index

  // Keeps references. Restore brings back the order that the columns have now.
  FieldOrder(CQORPGridColumnsInfo& columns, const ColumnTable& table, CheckList& shown, CheckList& hidden);

  // Fills the empty lists: visible columns in display order and checked, hidden ones by index and unchecked.
  void Fill();

  // Act on the selected item; true if the grid needs a new layout. A no-op without a selection. A moved item stays
  // selected; if it leaves its list, its successor is selected. A shown column follows all visible ones.
  bool MoveUp() { return MoveBy(-1); }
  bool MoveDown() { return MoveBy(1); }
  bool Hide();
  bool Show();
  // Restores the order only, not which columns are visible.
  bool Restore();

 private:
  enum class Wanted { Any, Visible, Hidden };
  bool MoveBy(int by);
  int FindColumn(const std::wstring& header, Wanted wanted) const;

  CQORPGridColumnsInfo& Columns;
  const ColumnTable& Table;
  CheckList& Shown;
  CheckList& Unshown;
  std::vector<int> SavedOrder;
};
