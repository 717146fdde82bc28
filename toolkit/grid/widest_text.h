// TextMeasures: how much each character of a font takes beside each other one. WidestText: the widest of very many
// texts.
#pragma once

#include <wx/dc.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "toolkit/system/toolkit_export.h"

// Promises: the width that the device gives to a text in the font that it has now, at a few nanoseconds a character.
// The device and its font must stay as they are. Control characters count as blanks, as a grid shows them.
//
// A text is as wide as its first character and, for each further one, what the pair with the one before takes more than
// that one alone. Each pair is measured when it first appears. That adds up to the pixel, as Linux and Windows give
// every glyph whole pixels, kerning included. It does not where letters join: runs such as ffi are measured with their
// neighbours, and texts with characters outside Latin, Greek and Cyrillic as a whole, each once.
class TOOLKIT_EXPORT TextMeasures {
 public:
  explicit TextMeasures(wxDC& dc);
  // Bytes of the system code page.
  int WidthPx(std::string_view text);
  int WidthPx(std::wstring_view text);
  // By the device itself.
  int MeasurePx(const std::wstring& text) const { return Dc.GetTextExtent(text).x; }

 private:
  template <typename Char>
  int SumOfSteps(std::basic_string_view<Char> text);
  int WidthWithCare(const std::wstring& text);
  int SumPx(std::wstring_view text);
  int StepPx(wchar_t before, wchar_t character);
  int MeasureStepPx(wchar_t before, wchar_t character);
  int JoinedMorePx(std::wstring_view text, std::size_t from, std::size_t end);
  template <typename Measure>
  int Known(std::wstring key, Measure measure);

  wxDC& Dc;
  std::vector<short> Steps;                       // by ASCII character before and ASCII character
  std::unordered_map<std::wstring, int> Further;  // pairs, joined letters and texts that have no place there
};

// Promises: the largest width that the device gives to any text offered. Each is looked at with TextMeasures; one of
// each width near the largest is kept, and those are measured by the device in the end.
class TOOLKIT_EXPORT WidestText {
 public:
  explicit WidestText(TextMeasures& measures) : Measures(measures) {}
  void Offer(std::string_view text);  // bytes of the system code page
  void Offer(std::wstring_view text);
  int WidthPx() const;  // 0 without a text

 private:
  bool IsWanted(int widthPx);

  TextMeasures& Measures;
  int LargestPx = 0;
  int LatestPx = 0;
  int NearPx = 0;
  std::unordered_map<int, std::wstring> Candidates;  // by width
};
