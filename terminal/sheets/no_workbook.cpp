// Stands in for workbook.cpp where the library is not there.
#include "terminal/sheets/sheet_cell.h"

bool CanSaveWorkbooks() noexcept {
  return false;
}

std::string WorkbookOf(const SheetSource&) {
  throw SheetError("this build of the terminal saves no workbooks; save as .csv instead");
}
