// ListSource: the rows of one of the terminal's lists before filter and sort, with their texts and values.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "terminal/sheets/sheet.h"

struct ListColumn {
  const wchar_t* Title;
  int WidthPx;  // on a screen of 96 dots an inch
  SheetKind Kind = SheetKind::Text;
  int Decimals = 0;  // of SheetKind::Decimal

  constexpr bool IsToRight() const noexcept { return Kind != SheetKind::Text; }
};

// The columns of a table whose rows begin with what is shown.
template <typename Row, std::size_t Count>
constexpr std::array<ListColumn, Count> ListColumnsOf(const Row (&rows)[Count]) {
  return [&rows]<std::size_t... Place>(std::index_sequence<Place...>) {
    return std::array<ListColumn, Count>{rows[Place].Shown...};
  }
  (std::make_index_sequence<Count>());
}

// Names a row for as long as it is there.
using ListRow = std::uint64_t;

struct ListChanges {
  bool All = false;           // every row may have changed or gone
  std::vector<ListRow> Rows;  // that were there and have other texts; any order, repeats allowed
};

// Rows are numbered without a gap; new ones come at the end, old ones may go at the begin.
class ListSource {
 public:
  virtual ~ListSource() = default;

  virtual std::span<const ListColumn> Columns() const = 0;
  virtual ListRow FirstRow() const { return 0; }
  virtual ListRow EndRow() const = 0;
  // As it is shown.
  virtual std::wstring Text(ListRow row, std::size_t column) const = 0;
  // For sorts and sheets: of the kind of the column, or nothing.
  virtual SheetValue Value(ListRow row, std::size_t column) const = 0;
  // The changes since the last call; called once a beat.
  virtual ListChanges TakeChanges() = 0;
};
