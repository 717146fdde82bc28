#include <wx/settings.h>

#include "tests/toolkit/grid_fixture.h"

namespace {

using GridPainting = GridFixture;

ColorRef ColorAt(const wxImage& picture, int x, int y) {
  return static_cast<ColorRef>(picture.GetRed(x, y) | picture.GetGreen(x, y) << 8 | picture.GetBlue(x, y) << 16);
}

// The colours of cells in a picture of the rows.
class Cells {
 public:
  explicit Cells(ProbeGrid& grid) : Grid(grid), Picture(PictureOf(*grid.GetRowsWindow())) {}
  // Right of the text, at y from the top of the cell, or from the bottom if y is negative.
  ColorRef At(int row, int column, int y) const {
    const wxRect cell = Grid.CellRect(row, column);
    return Pixel(cell.GetRight() - 3, y < 0 ? cell.GetBottom() + 1 + y : cell.y + y);
  }
  // The distances between the text and the two ends of the cell.
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
  ColorRef Pixel(int x, int y) const { return ColorAt(Picture, x, y); }
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
  // Rows 7 and 8 are selected, 10 is current; column 4 is a sort column, 5 is selected.
  const ColorRef odd = Blend(window, text, 3), sorted = Blend(window, text, 5), both = Blend(window, text, 8);
  const struct {
    int Row, Column, Y;
    ColorRef Expected;
  } places[] = {
      {0, 1, 5, kBlue},     {3, 4, 5, kBlue},      {1, 1, 5, odd},       {2, 1, 5, window},  {2, 4, 5, sorted},
      {1, 4, 5, both},      {2, 5, 5, highlight},  {6, 1, -2, kBlue},    {7, 1, 0, kAmber},  {7, 1, 1, kAmber},
      {7, 1, 2, highlight}, {7, 1, -2, highlight}, {8, 1, 0, highlight}, {8, 1, -2, kAmber}, {10, 1, 0, kAmber},
      {10, 1, 1, window},   {10, 1, -2, kAmber},   {10, 1, -3, window},
  };
  const Cells cells(*Grid);
  for (const auto& place : places)
    EXPECT_EQ(cells.At(place.Row, place.Column, place.Y), place.Expected)
        << "row " << place.Row << ", column " << place.Column << ", y " << place.Y;
}

TEST_F(GridPainting, HeadersHaveALineAtTheRightAndBelow) {
  const ColorRef face = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE).GetRGB();
  const ColorRef text = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT).GetRGB();
  const wxRect header = Grid->HeaderRect(1);
  const wxImage picture = PictureOf(*Grid->GetHeaderWindow());
  const ColorRef line = Blend(face, text, 28);
  EXPECT_EQ(ColorAt(picture, header.GetRight(), 5), line);
  EXPECT_EQ(ColorAt(picture, header.GetRight() - 1, 5), face);
  EXPECT_EQ(ColorAt(picture, header.x, 5), face);
  EXPECT_EQ(ColorAt(picture, header.x + 2, header.GetBottom()), line);
  EXPECT_EQ(ColorAt(picture, header.x + 2, header.GetBottom() - 1), face);
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
