// TextMeasures: the width of a text from the widths of its pairs of characters. WidestText: the width of the widest of
// very many texts.
#pragma once

#include <wx/dc.h>

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "toolkit/system/toolkit_export.h"

// The text as a grid shows it: control characters are blanks.
std::wstring WithoutControls(std::wstring text);

// The width that the device gives to a text in its present font, in a few nanoseconds per character. Device and font
// must not change. Control characters count as blanks, as a grid shows them.
//
// The width is that of the first character plus, for each further one, the width of the pair with its predecessor minus
// that of the predecessor. Each pair is measured once. The sum is exact, as Linux and Windows place glyphs at whole
// pixels, kerning included. Exceptions: ligatures such as ffi are measured with their neighbours, and texts with
// characters outside Latin, Greek and Cyrillic as a whole, each once.
class TOOLKIT_EXPORT TextMeasures {
 public:
  explicit TextMeasures(wxDC& dc);
  // In the system code page.
  int WidthPx(std::string_view text);
  int WidthPx(std::wstring_view text);
  // Measured by the device.
  int MeasurePx(const std::wstring& text) const { return Dc.GetTextExtent(text).x; }

 private:
  template <typename Char>
  std::optional<int> SumOfSteps(std::basic_string_view<Char> text);  // nothing for a text that needs care
  int WidthWithCare(const std::wstring& text);
  int SumPx(std::wstring_view text);
  int StepPx(wchar_t before, wchar_t character);
  int MeasureStepPx(wchar_t before, wchar_t character);
  int JoinedMorePx(std::wstring_view text, std::size_t from, std::size_t end);
  template <typename Measure>
  int Known(std::wstring key, Measure measure);

  wxDC& Dc;
  std::vector<short> Steps;                       // of ASCII pairs
  std::unordered_map<std::wstring, int> Further;  // of other pairs, ligatures and whole texts
};

// The largest width that the device gives to any of the offered texts. TextMeasures estimates each text; of each width
// near the largest, one text is kept, and the device measures those in the end.
class TOOLKIT_EXPORT WidestText {
 public:
  explicit WidestText(TextMeasures& measures) : Measures(measures) {}
  void Offer(std::string_view text);  // in the system code page
  void Offer(std::wstring_view text);
  int WidthPx() const;  // 0 without texts

 private:
  bool IsWanted(int widthPx);

  TextMeasures& Measures;
  int LargestPx = 0;
  int LatestPx = 0;
  int NearPx = 0;
  std::unordered_map<int, std::wstring> Candidates;  // by width
};
