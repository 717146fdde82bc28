#include "toolkit/grid/widest_text.h"

#include <wx/dcclient.h>

#include <algorithm>
#include <random>

#include "foundations/text_tools.h"
#include "tests/toolkit/gui_test.h"

namespace {

using WidestTextOf = GuiTest;

// By the device alone, as a grid shows the text.
int SlowWidth(const wxDC& dc, std::wstring text) {
  std::ranges::replace_if(
      text, [](wchar_t c) { return c < L' '; }, L' ');
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
