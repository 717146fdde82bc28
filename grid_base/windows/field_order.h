// FieldOrder: what the field chooser's commands do to its two lists and to the columns behind them.
//
// The lists hold headers. A header stands for the first column of the column table that bears it and fits the command,
// so of two columns with one header the first is meant.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "grid_base/settings/column_profile.h"
#include "toolkit/model/check_list.h"
#include "toolkit/model/columns_info.h"

class FieldOrder {
 public:
  using ColumnTable = std::map<int, ColumnDefaults>;  // by column index

  // Keeps references; the order at this moment is what Restore comes back to.
  FieldOrder(CQORPGridColumnsInfo& columns, const ColumnTable& table, CheckList& shown, CheckList& hidden);

  // Fills the empty lists: columns on show in display order and checked, the others by index and unchecked.
  void Fill();

  // On the selected item; true when the grid is to be laid out anew. Without a selection nothing changes. A moved item
  // stays selected; after one that left a list, its successor there is selected.
  bool MoveUp() { return MoveBy(-1); }
  bool MoveDown() { return MoveBy(1); }
  bool Hide();
  bool Show();
  // The order alone: what was shown or hidden in the meantime stays so.
  bool Restore();

 private:
  enum class Wanted { Any, Visible, Hidden };
  bool MoveBy(int by);
  int FindColumn(const std::wstring& header, Wanted wanted) const;

  CQORPGridColumnsInfo& Columns;
  const ColumnTable& Table;
  CheckList& Shown;
  CheckList& Unshown;
  int LastVisible = -1;
  std::vector<int> SavedOrder;
};
