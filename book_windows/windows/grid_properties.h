// GridProperties: the eleven properties of a book in the terminal's pane, and what a change of each does to the grid.
#pragma once

#include "book_windows/model/grid_settings.h"
#include "toolkit/properties/property_list.h"

class Book;
class TradeBookScreen;
class CTradeBookGrid;

class GridProperties {
 public:
  GridProperties(TradeBookScreen& screen, Book& book, CTradeBookGrid& grid);

  // Fills the list with the properties of this grid and tells the terminal.
  void PopulateProperties(CQORPPropList& list);
  // Applies an item of the last filled list; any other is ignored.
  void ApplyProperty(const CQORPProp& property);
  // Applies the loaded settings of the book to the grid.
  void ShowSettings();

 private:
  struct Row;
  static const Row kRows[];

  std::unique_ptr<CQORPProp> MakeItem(const Row& row, int id) const;
  // False if the change ends with a warning and is not saved.
  bool TakeValue(const Row& row, const CQORPProp::Value& value);
  bool WarnsOfOpenBooks();
  void FreezeColumns();
  void ShowSwitch(bool GridSettings::*flag);

  TradeBookScreen& Screen;
  Book& Shown;
  GridSettings& Settings;
  CTradeBookGrid& Grid;
};
