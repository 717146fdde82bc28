// GridProperties: the eleven properties of a book as the terminal's pane shows them, what a change of each does to a
// grid, and the settings that keep them.
#pragma once

#include "book_windows/model/grid_settings.h"
#include "toolkit/properties/property_list.h"

class BookList;
class CTradeBookBar;
class CTradeBookGrid;

class GridProperties {
 public:
  GridProperties(BookList& list, CTradeBookBar& parentBar, CTradeBookGrid& grid)
      : List(list), ParentBar(parentBar), Grid(grid) {}

  // Puts the properties as this grid has them into the list, and tells the terminal.
  void PopulateProperties(CQORPPropList& list);
  // Takes over the value of one of the items that the plug-in last filled a list with; any other changes nothing.
  void ApplyProperty(const CQORPProp& property);
  void LoadGridSettings(const std::wstring& key);
  void SaveGridSettings(const std::wstring& key);

  GridSettings Settings;

 private:
  struct Row;
  static const Row kRows[];

  std::unique_ptr<CQORPProp> MakeItem(const Row& row, int id) const;
  // False where the change ends with a warning, and is not saved.
  bool TakeValue(const Row& row, const CQORPProp::Value& value);
  bool WarnsOfOpenBooks();
  void FreezeColumns();
  void ShowSwitch(bool GridSettings::*flag);

  BookList& List;
  CTradeBookBar& ParentBar;
  CTradeBookGrid& Grid;
};
