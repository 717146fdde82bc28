// ListRows: the rows of a list as they are shown: those that pass its filter, in the order of its sort.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "terminal/lists/list_source.h"

enum class ListOrder : std::uint8_t { OldestFirst, NewestFirst };

// A filter is a text for each column: a row passes if its texts hold all of them, ignoring case. A sort is by one
// column; rows without a value come last, equal rows keep the order of the source. Unsorted, unfiltered new rows are
// appended in O(1) each; anything else is O(n log n) of the rows on a beat with changes.
class ListRows {
 public:
  // What a beat has changed on the screen.
  struct Update {
    bool Moved = false;                // rows came, went or changed places in other ways than the next two
    std::size_t AddedFirst = 0;        // new rows before all others
    std::size_t AddedLast = 0;         // new rows after all others
    std::vector<std::size_t> Texts{};  // places of the rows with other texts, unless Moved
  };

  explicit ListRows(ListSource& source, ListOrder order = ListOrder::OldestFirst);

  std::size_t Count() const noexcept { return Shown.size(); }
  // The row at that place. It may have gone since the last TakeChanges: then, and beyond the last place, nothing.
  std::optional<ListRow> RowAt(std::size_t place) const {
    if (place >= Shown.size() || Shown[place] < Rows.FirstRow() || Shown[place] >= Rows.EndRow()) return std::nullopt;
    return Shown[place];
  }
  // Linear.
  std::optional<std::size_t> PlaceOf(ListRow row) const;
  ListSource& Source() const noexcept { return Rows; }

  // Takes over what has changed in the source since the last call.
  Update TakeChanges();

  void SetFilter(std::size_t column, const std::wstring& text);
  void ClearFilters();
  std::wstring FilterOf(std::size_t column) const;
  bool HasFilters() const noexcept { return !Filters.empty(); }

  void SortBy(std::optional<std::size_t> column, bool rising);
  std::optional<std::size_t> SortColumn() const noexcept { return SortedBy; }
  bool SortsRising() const noexcept { return Rising; }

 private:
  struct Filter {
    std::wstring Typed;
    std::wstring Lower;
  };
  bool Passes(ListRow row) const;
  void Collect();
  void Sort();
  Update AddNew();
  Update CollectAgain(const std::vector<ListRow>& changed);

  ListSource& Rows;
  ListOrder Order;
  std::map<std::size_t, Filter> Filters;  // by column; without empty texts
  std::optional<std::size_t> SortedBy;
  bool Rising = true;
  std::vector<ListRow> Shown;
  ListRow End = 0;  // rows from here on have not been looked at
};
