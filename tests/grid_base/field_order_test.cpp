#include "grid_base/windows/field_order.h"

#include <gtest/gtest.h>

#include "tests/grid_base/check_list_text.h"

namespace {

class FakeList : public CheckList {
 public:
  int GetItemCount() const override { return static_cast<int>(Items.size()); }
  std::wstring GetItemText(int index) const override { return At(index) ? At(index)->first : L""; }
  bool GetCheck(int index) const override { return At(index) && At(index)->second; }
  void SetCheck(int index, bool checked) override { Items.at(static_cast<std::size_t>(index)).second = checked; }
  void DeleteItem(int index) override { Items.erase(Items.begin() + index), Selected = -1; }
  void InsertItem(int index, const std::wstring& text) override { Items.insert(Items.begin() + index, {text, false}); }
  int GetCurSel() const override { return Selected; }
  void SetCurSel(int index) override { Selected = index; }

 private:
  const std::pair<std::wstring, bool>* At(int index) const {
    return index >= 0 && index < GetItemCount() ? &Items[static_cast<std::size_t>(index)] : nullptr;
  }
  std::vector<std::pair<std::wstring, bool>> Items;
  int Selected = -1;
};

TEST(FieldOrder, CommandsMoveItemsAndColumns) {
  // The commands, of which 0 to 3 and a to c select, + checks all hidden items, - clears the selected one; the lists
  // and the columns then.
  const std::tuple<std::string, std::wstring, std::wstring, std::vector<int>> rows[] = {
      {"udhs", L"D+A+B+", L"CBE", {4, 0, 1}},
      {"0u", L"[D+]A+B+", L"CBE", {4, 0, 1}},
      {"2d", L"D+A+[B+]", L"CBE", {4, 0, 1}},
      {"1-u", L"[A]D+B+", L"CBE", {0, 4, 1}},
      {"0dd", L"A+B+[D+]", L"CBE", {0, 1, 4}},
      {"2h", L"D+[A+]", L"BCBE", {4, 0}},
      {"+0h", L"[A+]B+", L"DC+B+E", {0, 1}},  // inserts at the top, clears at the bottom
      {"0hhhh", L"", L"BADCBE", {}},
      {"as", L"D+A+B+C+", L"[B]E", {4, 0, 1, 2}},
      {"0has", L"[A+]B+D+", L"[C]BE", {0, 1, 4}},  // behind all others, not back to its place
      {"0hbs", L"[A+]B+C+", L"D[B]E", {0, 1, 2}},
      {"bs", L"D+A+B+B+", L"C[E]", {4, 0, 1, 3}},
      {"bs3u", L"D+A+[B+]B+", L"C[E]", {4, 0, 1, 3}},  // moves the first of two columns with one header
      {"bs3h", L"D+A+[B+]", L"B[C]E", {4, 0, 3}},
      {"csbs", L"D+A+B+E+B+", L"[C]", {4, 0, 1, 3}},
      {"1ur", L"[A+]D+B+", L"CBE", {4, 0, 1}},
      {"1uhr", L"[D+]B+", L"ACBE", {4, 1}},
  };
  for (const auto& [commands, shownText, hiddenText, places] : rows) {
    SCOPED_TRACE(commands);
    // Visible are D A B; hidden are C, a second B, and E, which the column table does not have.
    CQORPGridColumnsInfo columns;
    FieldOrder::ColumnTable table;
    for (int column = 0; column < 6; ++column) columns.InsertColumn(column, std::wstring(1, L"ABCBDE"[column]), 50);
    for (const int column : {2, 3, 5}) columns.SetColumnVisible(column, false);
    columns.SetColumnDisplayPos(0, 4);
    for (int column = 0; column < 5; ++column) table[column].Header = columns.GetColumnName(column);
    FakeList shown, hidden;
    FieldOrder order(columns, table, shown, hidden);
    order.Fill();
    for (const char command : commands) {
      if (command == 'u') order.MoveUp();
      if (command == 'd') order.MoveDown();
      if (command == 'h') order.Hide();
      if (command == 's') order.Show();
      if (command == 'r') order.Restore();
      if (command == '-') shown.SetCheck(shown.GetCurSel(), false);
      if (command == '+')
        for (int i = 0; i < hidden.GetItemCount(); ++i) hidden.SetCheck(i, true);
      if (command >= '0' && command <= '3') shown.SetCurSel(command - '0');
      if (command >= 'a' && command <= 'c') hidden.SetCurSel(command - 'a');
    }
    EXPECT_EQ(std::pair(TextOf(shown), TextOf(hidden)), std::pair(shownText, hiddenText));
    EXPECT_EQ(columns.DisplayColumns(), places);
  }
}

}  // namespace
