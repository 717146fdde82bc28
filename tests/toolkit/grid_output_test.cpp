#include <wx/clipbrd.h>
#include <wx/dcclient.h>
#include <wx/grid.h>
#include <wx/settings.h>
#include <wx/textfile.h>

#include <random>

#include "foundations/text_tools.h"
#include "tests/toolkit/grid_fixture.h"
#include "toolkit/grid/widest_text.h"

namespace {

using GridPainting = GridFixture;

constexpr auto ColorOf = [](wxSystemColour index) -> ColorRef { return wxSystemSettings::GetColour(index).GetRGB(); };

// A window as painted now.
struct Picture {
  explicit Picture(wxWindow& window) : Image(PictureOf(window)) {}
  ColorRef At(int x, int y) const { return ColourAt(Image, {x, y}).GetRGB(); }
  // The first and the last x at which a pixel differs from the upper left one; the right and the left end for none.
  std::pair<int, int> Ink(const wxRect& rect) const {
    std::pair<int, int> ends(rect.GetRight(), rect.x);
    for (int x = rect.x; x <= rect.GetRight(); ++x)
      for (int y = rect.y; y <= rect.GetBottom(); ++y)
        if (At(x, y) != At(rect.x, rect.y)) ends = {std::min(ends.first, x), x};
    return ends;
  }
  bool HasInk(const wxRect& rect) const { return Ink(rect).first <= Ink(rect).second; }

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
  const Picture labels(*dynamic_cast<wxGrid&>(*Grid->GetRowsWindow()->GetParent()).GetGridRowLabelWindow());
  for (const int row : {9, 10, 11})
    EXPECT_EQ(labels.HasInk({1, Grid->CellRect(row, 1).y + 1, labels.Image.GetWidth() - 3, 10}), row == 10) << row;
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
  EXPECT_GT(std::min(header.height, Grid->CellRect(0, 1).height), Grid->GetCharHeight());
  const auto paint = [this] {
    Grid->AdjustLayout();
    Pump();
    return Picture(*Grid->GetHeaderWindow());
  };
  const auto endsFrom = [&](int px) { return wxRect(header.GetRight() - px, header.y + 2, px - 2, header.height - 5); };
  Picture picture = paint();
  const int right = header.GetRight(), bottom = header.GetBottom(), x = header.x + 2;
  EXPECT_EQ(std::tuple(picture.At(right, 5), picture.At(right - 1, 5), picture.At(x, 5)), std::tuple(line, face, face));
  EXPECT_EQ(std::pair(picture.At(x, bottom), picture.At(x, bottom - 1)), std::pair(line, face));
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
  const auto rising = sort(1, true), falling = sort(1, false);
  EXPECT_GT(rising.second - rising.first, falling.second - falling.first) << "an arrow upwards is wide below";
  EXPECT_LT(sort(2, true).first, rising.first) << "the first of two sort columns has a number beside its arrow";
  Grid->GetColumnsInfo().SelectColumn(1, true);
  EXPECT_EQ(paint().At(header.x + 1, 3), Blend(face, highlight, 35));
  Grid->GetColumnsInfo().SelectColumn(1, false);
  for (int i = 0; i < 2; ++i) PressKey(WXK_RIGHT, kControl);
  picture = paint();
  for (int up = 0; up < 3; ++up)
    EXPECT_EQ(picture.At(header.x + 1, bottom - up) == highlight, up < 2) << "a line of two pixels: the current column";
  const int drop = Grid->HeaderRect(3).x;
  SendMouse(*Grid->GetHeaderWindow(), Middle(header), kNoKey, {wxEVT_LEFT_DOWN});
  for (const int at : {drop - 10, drop + 10}) {
    SendMouse(*Grid->GetHeaderWindow(), {at, 5}, kNoKey, {wxEVT_MOTION});
    picture = paint();
    EXPECT_TRUE(picture.At(drop, 5) == highlight && picture.At(drop - 1, 5) == highlight) << "where it would go";
  }
  SendMouse(*Grid->GetHeaderWindow(), Middle(header), kNoKey, {wxEVT_MOTION, wxEVT_LEFT_UP});
  EXPECT_EQ(paint().At(drop, 5), face);
  for (const auto& [prompt, text] : {std::pair(L"<all>", L""), {L"", L""}, {L"", L"x"}}) {
    Grid->EnableFilterBar(true, prompt);
    Grid->SetFilterText(1, text);
    const wxRect field = Grid->FilterRect(1).Deflate(2, 3);
    EXPECT_EQ(paint().At(field.x, field.y), ColorOf(wxSYS_COLOUR_WINDOW));
    EXPECT_EQ(paint().HasInk(field), *prompt != 0 || *text != 0) << prompt << text;
  }
}

TEST_F(GridPainting, TellsInTheMiddleWhyItIsEmpty) {
  wxWindow& rows = *Grid->GetRowsWindow();
  // The distances between the text and the sides; the width of the window for none.
  const auto margins = [&rows] {
    const wxRect whole = rows.GetClientRect();
    const auto [first, last] = Picture(rows).Ink(whole);
    return std::pair(first - whole.x, whole.GetRight() - last);
  };
  Grid->SetVirtualRows(0);
  EXPECT_GT(margins().first, 500) << "nothing to tell";
  for (const wchar_t* why : {L"No trades yet", L"No trade passes the filter"}) {
    Grid->WhyEmpty = why;
    Grid->RedrawRows();
    for (const int width : {500, 400}) {
      Grid->SetSize(width, 400);
      ASSERT_TRUE(PumpUntil([&] { return rows.GetClientSize().x <= width && rows.GetClientSize().x > width - 60; }));
      const auto [left, right] = margins();
      EXPECT_TRUE(left > 50 && std::abs(left - right) <= 4) << left << ' ' << right;
    }
  }
  Grid->SetVirtualRows(1);
  EXPECT_FALSE(Picture(rows).HasInk(rows.GetClientRect().Deflate(0, 200)));
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
  const auto [left, rest] = margins(0);
  const auto [centre, end] = margins(2);
  EXPECT_TRUE(left <= 5 && rest > 20 && margins(1).second <= 5);
  EXPECT_TRUE(centre > 20 && std::abs(centre - end) <= 3) << centre << ' ' << end;
  Grid->TextShift = 20;
  EXPECT_EQ(margins(0).first, left + 20);
  Grid->TextShift = 0;
  Grid->SetColumnWidth(0, 20);
  EXPECT_GE(margins(0).second, 1) << "a text that is too long ends in dots within its cell";
}

// The unchanged data of the clipboard in that format, in UTF-8; empty if there is none.
std::string Clipboard(const wxDataFormat& format) {
  const wxClipboardLocker locker;
  wxCustomDataObject data(format);  // wxTextDataObject would give every system's line ends as \n
  if (!wxTheClipboard->IsSupported(format) || !wxTheClipboard->GetData(data)) return {};
  if (format == wxDF_HTML || sizeof(wchar_t) > 2) return {static_cast<const char*>(data.GetData()), data.GetSize()};
  return wxString(static_cast<const wchar_t*>(data.GetData())).utf8_string();  // UTF-16 and a zero
}

// The table without the prefix that declares UTF-8.
std::string Table() {
  const std::string html = Clipboard(wxDF_HTML);
  const std::size_t from = html.find("<table>"), end = html.rfind("</table>");
  EXPECT_TRUE(html.starts_with("<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\"><table>") ||
              html.starts_with("Version:"))
      << html;
  return end < html.size() ? html.substr(from, end + 8 - from) : html;
}

using GridCopy = GridFixture;

TEST_F(GridCopy, ReachesTheClipboard) {
  const std::string eol = wxString(wxTextFile::GetEOL()).ToStdString();
  for (const int column : {2, 3, 4, 5}) Grid->SetColumnVisible(column, false);
  Grid->EnableVirtualMode([](int row, int column, CQORPGridCell& cell) {
    cell.Text = column == 0 ? L"Z\u00FCrich \u20AC" : std::to_wstring(row);
    return row != 1 || column != 1;
  });
  Grid->SetVirtualRows(2);
  ASSERT_TRUE(Grid->Copy());
  EXPECT_EQ(Clipboard(wxDF_UNICODETEXT), "Z\xC3\xBCrich \xE2\x82\xAC\t0" + eol + "Z\xC3\xBCrich \xE2\x82\xAC\t" + eol);
  EXPECT_EQ(Table(),
            "<table><tr><td>Z\xC3\xBCrich \xE2\x82\xAC</td><td>0</td></tr>"
            "<tr><td>Z\xC3\xBCrich \xE2\x82\xAC</td><td></td></tr></table>");

  Grid->SetCurSel(1);
  ASSERT_TRUE(Grid->CopyHTML());
  EXPECT_EQ(
      Table(),
      "<table><tr><th>Title 0</th><th>Title 1</th></tr><tr><td>Z\xC3\xBCrich \xE2\x82\xAC</td><td></td></tr></table>");
  EXPECT_EQ(Clipboard(wxDF_UNICODETEXT), "");
  Grid->SetVirtualRows(0);
  EXPECT_FALSE(Grid->Copy() || Grid->CopyHTML());
}

using WidestTextOf = GuiTest;

// By the device alone, as a grid shows the text.
int SlowWidth(const wxDC& dc, std::wstring text) {
  for (wchar_t& letter : text)
    if (letter < L' ') letter = L' ';
  return dc.GetTextExtent(text).x;
}

TEST_F(WidestTextOf, IsWhatTheDeviceSaysOfEach) {
  const std::vector<std::vector<std::wstring>> alphabets{
      {L"0", L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9", L".", L",", L"-"},
      {L"AV", L"A", L"V", L"To", L"Wa", L"L'", L"P.", L"fi", L"ff", L"ffi", L"ffl", L"fj", L"tt", L"Th", L" "},
      {L"a", L"e", L"\u00E9", L"\u20AC", L"\u00DF", L"m", L"i", L"f", L"W", L"\u2019", L"\t", L"\u0416"},
      {L"ab", L"Te", L"\u05D0", L"\u0645\u062D", L"e\u0301", L"\u6F22", L"\U0001F600", L"12", L" ", L"\n"}};
  for (const wxFontInfo& font : {wxFontInfo(10).FaceName("Sans"), wxFontInfo(9).FaceName("Sans").Bold(),
                                 wxFontInfo(10).FaceName("Monospace"), wxFontInfo(13).FaceName("Serif").Italic()}) {
    wxClientDC dc(Frame);
    dc.SetFont(wxFont(font));
    TextMeasures measures(dc);
    for (unsigned set = 0; set < 40; ++set) {
      SCOPED_TRACE(testing::Message() << dc.GetFont().GetNativeFontInfoUserDesc().ToStdString() << ", set " << set);
      std::mt19937 random(set);
      WidestText widest(measures), widestOfBytes(measures);
      int expected = 0, expectedOfBytes = 0;
      for (int count = 0; count < 150; ++count) {
        std::wstring text;
        for (auto left = random() % (2 + set % 25); left > 0; --left)
          text += alphabets[set % 4][random() % alphabets[set % 4].size()];
        EXPECT_EQ(measures.WidthPx(std::wstring_view(text)), SlowWidth(dc, text)) << wxString(text).utf8_string();
        expected = std::max(expected, SlowWidth(dc, text));
        widest.Offer(std::wstring_view(text));
        std::string bytes = WideToNarrow(text) + static_cast<char>(random() % 256);
        widestOfBytes.Offer(std::string_view(bytes));
        expectedOfBytes = std::max(expectedOfBytes, SlowWidth(dc, NarrowToWide(std::move(bytes))));
      }
      EXPECT_EQ(widest.WidthPx(), expected);
      EXPECT_EQ(widestOfBytes.WidthPx(), expectedOfBytes);
    }
    EXPECT_EQ(WidestText(measures).WidthPx(), 0);
  }
}

}  // namespace
