#include "terminal/lists/list_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "terminal/common/numbers.h"

namespace {

// Rows of a text and a number; a row with the number 0 has none.
class TestSource : public ListSource {
 public:
  struct Row {
    std::wstring Text;
    std::int64_t Number = 0;
  };
  std::span<const ListColumn> Columns() const override {
    static constexpr ListColumn kColumns[] = {{L"Text", 10}, {L"Number", 10, SheetKind::Whole}};
    return kColumns;
  }
  ListRow FirstRow() const override { return First; }
  ListRow EndRow() const override { return Rows.size(); }
  std::wstring Text(ListRow row, std::size_t column) const override {
    return column == 0 ? Rows[row].Text : std::to_wstring(Rows[row].Number);
  }
  SheetValue Value(ListRow row, std::size_t column) const override {
    if (column == 0) return Rows[row].Text;
    return Rows[row].Number == 0 ? SheetValue() : SheetValue(Rows[row].Number);
  }
  ListChanges TakeChanges() override { return std::exchange(Changes, {}); }

  std::vector<Row> Rows;
  ListRow First = 0;
  ListChanges Changes;
};

// The numbers of the rows as they are shown.
std::string ShownRows(const ListRows& rows) {
  std::string text;
  for (std::size_t place = 0; place < rows.Count(); ++place)
    if (const auto row = rows.RowAt(place)) text += std::to_string(*row) + " ";
  return text;
}

TEST(ListRows, TellsWhatABeatChanges) {
  TestSource source;
  source.Rows = {{L"a", 1}, {L"B", 2}};
  ListRows oldest(source);
  ListRows newest(source, ListOrder::NewestFirst);
  EXPECT_EQ(ShownRows(oldest) + ShownRows(newest), "0 1 1 0 ");
  source.Rows.insert(source.Rows.end(), {{L"c", 3}, {L"d", 4}});
  source.Changes.Rows = {1, 1};
  ListRows::Update update = oldest.TakeChanges();
  EXPECT_TRUE(!update.Moved && update.AddedFirst == 0 && update.AddedLast == 2);
  EXPECT_EQ(update.Texts, std::vector<std::size_t>{1});
  source.First = 1;
  update = newest.TakeChanges();
  EXPECT_TRUE(!update.Moved && update.AddedFirst == 2 && update.AddedLast == 0) << "the oldest went at the end";
  EXPECT_EQ(ShownRows(newest), "3 2 1 ");
  EXPECT_EQ(oldest.RowAt(0), std::nullopt) << "gone, but not taken over";
  EXPECT_TRUE(oldest.TakeChanges().Moved);
  newest.SetFilter(0, L"b");
  EXPECT_EQ(ShownRows(newest), "1 ");
  source.Rows.push_back({L"e", 5});
  update = newest.TakeChanges();
  EXPECT_TRUE(!update.Moved && update.AddedFirst == 0);
  source.Rows[3].Text = L"abc";
  source.Changes.Rows = {3};
  EXPECT_TRUE(newest.TakeChanges().Moved) << "passes now";
  EXPECT_EQ(newest.PlaceOf(1), 1U);
  newest.ClearFilters();
  source.Changes.All = true;
  source.Rows.resize(2);
  EXPECT_TRUE(newest.TakeChanges().Moved);
  EXPECT_EQ(ShownRows(newest), "1 ");
}

// The slow way: all rows again, one comparison at a time.
std::vector<ListRow> SlowRows(const TestSource& source, bool newestFirst, const std::wstring& filter,
                              std::optional<std::size_t> sort, bool rising) {
  std::vector<ListRow> rows;
  for (ListRow row = source.First; row < source.Rows.size(); ++row)
    if (source.Rows[row].Text.find(filter) != std::wstring::npos) rows.push_back(row);
  if (newestFirst) std::reverse(rows.begin(), rows.end());
  const auto before = [&](ListRow left, ListRow right) {
    const TestSource::Row& a = source.Rows[left];
    const TestSource::Row& b = source.Rows[right];
    if (sort == 0U) return rising ? a.Text < b.Text : b.Text < a.Text;
    if (a.Number == 0 || b.Number == 0) return a.Number != 0 && b.Number == 0;
    return rising ? a.Number < b.Number : b.Number < a.Number;
  };
  if (sort) std::stable_sort(rows.begin(), rows.end(), before);
  return rows;
}

TEST(ListRows, AgreesWithSlowRows) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    std::mt19937 dice(seed);
    TestSource source;
    const bool newestFirst = dice() % 2 == 0;
    ListRows rows(source, newestFirst ? ListOrder::NewestFirst : ListOrder::OldestFirst);
    std::wstring filter;
    std::optional<std::size_t> sort;
    bool rising = true;
    for (int step = 0; step < 60; ++step) {
      for (auto more = dice() % 3; more > 0; --more)
        source.Rows.push_back(
            {std::wstring(1, static_cast<wchar_t>(L'a' + dice() % 3)), static_cast<std::int64_t>(dice() % 4)});
      if (!source.Rows.empty() && dice() % 3 == 0) {
        const ListRow row = dice() % source.Rows.size();
        source.Rows[row] = {L"b", static_cast<std::int64_t>(dice() % 4)};
        source.Changes.Rows.push_back(row);
      }
      if (source.First < source.Rows.size() && dice() % 5 == 0) ++source.First;
      if (dice() % 8 == 0) rows.SetFilter(0, filter = dice() % 2 ? L"b" : L"");
      if (dice() % 8 == 0) {
        sort = dice() % 3 == 0 ? std::nullopt : std::optional<std::size_t>(dice() % 2);
        rows.SortBy(sort, rising = dice() % 2 == 0);
      }
      rows.TakeChanges();
      std::vector<ListRow> shown;
      for (std::size_t place = 0; place < rows.Count(); ++place) shown.push_back(rows.RowAt(place).value());
      ASSERT_EQ(shown, SlowRows(source, newestFirst, filter, sort, rising)) << "seed " << seed << ", step " << step;
    }
  }
}

TEST(NumberText, FollowsTheMarksOfTheRegion) {
  const NumberMarks english;
  const NumberMarks german{L'.', L','};
  const std::pair<double, const wchar_t*> prices[] = {{1313.4, L"1,313.40"},
                                                      {0.05, L"0.05"},
                                                      {-0.00001, L"0.00"},
                                                      {0.12345, L"0.1235"},
                                                      {-1234567.125, L"-1,234,567.125"},
                                                      {999, L"999.00"},
                                                      {0, L"0.00"},
                                                      {1e300 * 1e300, L""}};
  for (const auto& [price, text] : prices) EXPECT_EQ(PriceText(price, english), text);
  EXPECT_EQ(PriceText(-1234567.125, german), L"-1.234.567,125");
  EXPECT_EQ(DecimalText(-1999.996, 2, german) + L" " + DecimalText(-0.004, 2, german), L"-2.000,00 0,00");
  EXPECT_EQ(CountText(0, english) + L" " + CountText(999, english) + L" " + CountText(1000, german), L"0 999 1.000");
  EXPECT_EQ(QuantityText(-1234567, english), L"-1,234,567");
  EXPECT_EQ(QuantityText(std::numeric_limits<std::int64_t>::min(), english), L"-9,223,372,036,854,775,808");
  EXPECT_EQ(WithSign(1, L"1") + WithSign(-1, L"-1") + WithSign(0, L"0"), L"+1-10");
}

}  // namespace
