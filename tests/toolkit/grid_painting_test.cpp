#include <wx/settings.h>

#include "tests/toolkit/grid_fixture.h"

namespace {

using GridPainting = GridFixture;

// The cells of a picture of the rows, by their colours.
class Cells {
 public:
  explicit Cells(ProbeGrid& grid) : Grid(grid), Picture(PictureOf(*grid.GetRowsWindow())) {}
  // At the right end, where no text is, and so far from the top; from the bottom if negative.
  ColorRef At(int row, int column, int y) const {
    const wxRect cell = Grid.CellRect(row, column);
    return Pixel(cell.GetRight() - 3, y < 0 ? cell.GetBottom() + 1 + y : cell.y + y);
  }
  // From the left end of the cell to the text, and from the text to the right end.
  std::pair<int, int> Margins(int row, int column) const {
    const wxRect cell = Grid.CellRect(row, column).Deflate(2, 4);
    const auto isInk = [&](int x) {
      for (int y = cell.y; y < cell.GetBottom(); ++y)
        if (Pixel(x, y) != Pixel(cell.x, cell.y)) return true;
      return false;
    };
    int left = cell.x, right = cell.GetRight();
    while (left < right && !isInk(left)) ++left;
    while (right > left && !isInk(right)) --right;
    return {left - cell.x, cell.GetRight() - right};
  }

 private:
  ColorRef Pixel(int x, int y) const {
    return static_cast<ColorRef>(Picture.GetRed(x, y) | Picture.GetGreen(x, y) << 8 | Picture.GetBlue(x, y) << 16);
  }
  ProbeGrid& Grid;
  wxImage Picture;
};

TEST_F(GridPainting, PaintsCellsByOwnColoursMarksAndTheme) {
  constexpr ColorRef kBlue = 0xFF0000, kAmber = 0x00C8FF;
  const ColorRef window = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW).GetRGB();
  const ColorRef text = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT).GetRGB();
  const ColorRef highlight = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT).GetRGB();
  Grid->EnableAlternateRows(true);
  Grid->EnableMarkSortedColumn(true);
  Grid->GetColumnsInfo().SetSortColumn(4, true, false);
  Grid->GetColumnsInfo().SelectColumn(5, true);
  Grid->AdjustLayout();
  for (const int row : {7, 8}) ClickRow(row, row == 8 ? kShift : kNoKey);
  PressKey(WXK_DOWN, kControl);
  PressKey(WXK_DOWN, kControl);
  const struct {
    const char* What;
    int Row, Column, Y;
    ColorRef Expected;
  } places[] = {
      {"own", 0, 1, 5, kBlue},
      {"own in a sorted column", 3, 4, 5, kBlue},
      {"alternate", 1, 1, 5, Blend(window, text, 3)},
      {"plain", 2, 1, 5, window},
      {"sorted", 2, 4, 5, Blend(window, text, 5)},
      {"sorted and alternate", 1, 4, 5, Blend(window, text, 8)},
      {"selected column", 2, 5, 5, highlight},
      {"above the selection", 6, 1, -2, kBlue},
      {"upper frame", 7, 1, 0, kAmber},
      {"upper frame is 2 px", 7, 1, 1, kAmber},
      {"selected", 7, 1, 2, highlight},
      {"selected at the bottom", 7, 1, -2, highlight},
      {"no frame within a range", 8, 1, 0, highlight},
      {"lower frame", 8, 1, -2, kAmber},
      {"current", 10, 1, 0, kAmber},
      {"its frame is 1 px", 10, 1, 1, window},
      {"on both sides", 10, 1, -2, kAmber},
      {"current, lower", 10, 1, -3, window},
  };
  const Cells cells(*Grid);
  for (const auto& place : places)
    EXPECT_EQ(cells.At(place.Row, place.Column, place.Y), place.Expected) << place.What << std::hex;
}

TEST_F(GridPainting, AlignsAndShiftsTheText) {
  for (const int column : {1, 2}) Grid->SetColumnAlign(column, column);
  Grid->EnableGridLines(false);
  const Cells plain(*Grid);
  EXPECT_LE(plain.Margins(1, 0).first, 5);
  EXPECT_LE(plain.Margins(1, 1).second, 5);
  EXPECT_NEAR(plain.Margins(1, 2).first, plain.Margins(1, 2).second, 3);
  EXPECT_GT(plain.Margins(1, 2).first, 20);
  Grid->TextShift = 20;
  const Cells shifted(*Grid);
  EXPECT_EQ(shifted.Margins(1, 0).first, plain.Margins(1, 0).first + 20);
}

}  // namespace
