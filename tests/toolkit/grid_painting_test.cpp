#include <wx/settings.h>

#include "tests/toolkit/grid_fixture.h"

namespace {

using GridPainting = GridFixture;

ColorRef ColorOf(wxSystemColour index) {
  return wxSystemSettings::GetColour(index).GetRGB();
}

// A window as painted now.
class Picture {
 public:
  explicit Picture(wxWindow& window) : Image(PictureOf(window)) {}
  ColorRef At(int x, int y) const {
    return static_cast<ColorRef>(Image.GetRed(x, y) | Image.GetGreen(x, y) << 8 | Image.GetBlue(x, y) << 16);
  }
  // The first and the last x at which a pixel differs from the upper left one; the right and the left end for none.
  std::pair<int, int> Ink(const wxRect& rect) const {
    const auto isInk = [&](int x) {
      for (int y = rect.y; y <= rect.GetBottom(); ++y)
        if (At(x, y) != At(rect.x, rect.y)) return true;
      return false;
    };
    int first = rect.x, last = rect.GetRight();
    while (first < rect.GetRight() && !isInk(first)) ++first;
    while (last > rect.x && !isInk(last)) --last;
    return {first, last};
  }
  bool HasInk(const wxRect& rect) const { return Ink(rect).first <= Ink(rect).second; }

 private:
  wxImage Image;
};

TEST_F(GridPainting, PaintsCellsByOwnColoursMarksAndTheme) {
  constexpr ColorRef kBlue = 0xFF0000, kAmber = 0x00C8FF;
  const ColorRef window = ColorOf(wxSYS_COLOUR_WINDOW), text = ColorOf(wxSYS_COLOUR_WINDOWTEXT);
  const ColorRef highlight = ColorOf(wxSYS_COLOUR_HIGHLIGHT);
  Grid->EnableAlternateRows(true);
  Grid->EnableMarkSortedColumn(true);
  Grid->GetColumnsInfo().SetSortColumn(4, true, false);
  Grid->GetColumnsInfo().SelectColumn(5, true);
  Grid->AdjustLayout();
  for (const int row : {7, 8}) ClickRow(row, row == 8 ? kShift : kNoKey);
  for (int i = 0; i < 2; ++i) PressKey(WXK_DOWN, kControl);
  // Rows 7 and 8 are selected, 10 is current; column 4 is a sort column, 5 is selected.
  const ColorRef odd = Blend(window, text, 3), sorted = Blend(window, text, 5), both = Blend(window, text, 8);
  // Row, column, and y from the top of the cell, or from the bottom if negative, right of the text.
  const std::tuple<int, int, int, ColorRef> places[] = {
      {0, 1, 5, kBlue},     {3, 4, 5, kBlue},      {1, 1, 5, odd},       {2, 1, 5, window},  {2, 4, 5, sorted},
      {1, 4, 5, both},      {2, 5, 5, highlight},  {6, 1, -2, kBlue},    {7, 1, 0, kAmber},  {7, 1, 1, kAmber},
      {7, 1, 2, highlight}, {7, 1, -2, highlight}, {8, 1, 0, highlight}, {8, 1, -2, kAmber}, {10, 1, 0, kAmber},
      {10, 1, 1, window},   {10, 1, -2, kAmber},   {10, 1, -3, window},
  };
  const Picture picture(*Grid->GetRowsWindow());
  for (const auto& [row, column, y, expected] : places) {
    const wxRect cell = Grid->CellRect(row, column);
    EXPECT_EQ(picture.At(cell.GetRight() - 3, y < 0 ? cell.GetBottom() + 1 + y : cell.y + y), expected)
        << "row " << row << ", column " << column << ", y " << y;
  }
  const wxRect cell = Grid->CellRect(2, 1);
  EXPECT_NE(picture.At(cell.GetRight(), cell.y + 5), window) << "a line at the right";
  Grid->EnableGridLines(false);
  EXPECT_EQ(Picture(*Grid->GetRowsWindow()).At(cell.GetRight(), cell.y + 5), window);
}

TEST_F(GridPainting, HeadersShowTitleMarksAndLines) {
  const ColorRef face = ColorOf(wxSYS_COLOUR_BTNFACE), line = Blend(face, ColorOf(wxSYS_COLOUR_BTNTEXT), 28);
  const ColorRef highlight = ColorOf(wxSYS_COLOUR_HIGHLIGHT);
  Grid->SetColumnWidth(1, 140);
  const wxRect header = Grid->HeaderRect(1);
  const auto paint = [this] {
    Grid->AdjustLayout();
    Pump();
    return Picture(*Grid->GetHeaderWindow());
  };
  const auto endsFrom = [&](int px) { return wxRect(header.GetRight() - px, header.y + 2, px - 2, header.height - 5); };
  Picture picture = paint();
  EXPECT_EQ(picture.At(header.GetRight(), 5), line);
  EXPECT_EQ(picture.At(header.GetRight() - 1, 5), face);
  EXPECT_EQ(picture.At(header.x, 5), face);
  EXPECT_EQ(picture.At(header.x + 2, header.GetBottom()), line);
  EXPECT_EQ(picture.At(header.x + 2, header.GetBottom() - 1), face);
  EXPECT_TRUE(picture.HasInk(wxRect(header.x + 2, header.y + 2, 40, header.height - 5))) << "the title";
  EXPECT_FALSE(picture.HasInk(endsFrom(24)));
  Grid->SetFilterText(1, L"x");
  EXPECT_TRUE(paint().HasInk(endsFrom(24))) << "a funnel, also while the bar is hidden";
  Grid->OnFilterBarClearAll();
  EXPECT_FALSE(paint().HasInk(endsFrom(24)));
  const auto sort = [&](int column, bool rising) {
    Grid->GetColumnsInfo().SetSortColumn(column, rising, true);
    picture = paint();
    return picture.Ink(wxRect(header.GetRight() - 40, header.y + header.height / 2 + 1, 38, 1));
  };
  const auto [left, right] = sort(1, true);
  const auto [fallingLeft, fallingRight] = sort(1, false);
  EXPECT_GT(right - left, fallingRight - fallingLeft) << "an arrow upwards is wide below, one downwards above";
  EXPECT_LT(sort(2, true).first, left) << "the first of two sort columns has a number beside its arrow";
  Grid->GetColumnsInfo().SelectColumn(1, true);
  EXPECT_EQ(paint().At(header.x + 1, 3), Blend(face, highlight, 35));
  Grid->GetColumnsInfo().SelectColumn(1, false);
  for (int i = 0; i < 2; ++i) PressKey(WXK_RIGHT, kControl);
  EXPECT_EQ(paint().At(header.x + 1, header.GetBottom() - 1), highlight) << "the current column";
  Grid->EnableFilterBar(true, L"<all>");
  const wxRect field = Grid->FilterRect(1).Deflate(2, 3);
  EXPECT_EQ(paint().At(field.x, field.y), ColorOf(wxSYS_COLOUR_WINDOW));
  EXPECT_TRUE(paint().HasInk(field)) << "the prompt";
  Grid->EnableFilterBar(true, L"");
  EXPECT_FALSE(paint().HasInk(field));
  Grid->SetFilterText(1, L"x");
  EXPECT_TRUE(paint().HasInk(field));
}

TEST_F(GridPainting, AlignsCutsAndShiftsTheText) {
  for (const int column : {1, 2}) Grid->SetColumnAlign(column, column);
  Grid->EnableGridLines(false);
  // The distances between the text and the two ends of the cell.
  const auto margins = [this](int column) {
    const wxRect cell = Grid->CellRect(1, column).Deflate(2, 4);
    const auto [first, last] = Picture(*Grid->GetRowsWindow()).Ink(cell);
    return std::pair(first - cell.x, cell.GetRight() - last);
  };
  const int left = margins(0).first;
  EXPECT_LE(left, 5);
  EXPECT_LE(margins(1).second, 5);
  EXPECT_NEAR(margins(2).first, margins(2).second, 3);
  EXPECT_GT(margins(2).first, 20);
  Grid->TextShift = 20;
  EXPECT_EQ(margins(0).first, left + 20);
  Grid->TextShift = 0;
  Grid->SetColumnWidth(0, 20);
  EXPECT_GE(margins(0).second, 1) << "a text that is too long ends in dots within its cell";
}

}  // namespace
