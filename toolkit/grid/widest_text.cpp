#include "toolkit/grid/widest_text.h"

#include <algorithm>
#include <type_traits>

#include "platform/locale.h"

namespace {

constexpr unsigned kAscii = 128;
constexpr unsigned kNothingBefore = kAscii;  // the predecessor of the first character
// A step is twice its pixels; an odd one needs care: it is not measured yet, or is part of a ligature.
constexpr short kCare = 1;
constexpr int kWidestStepPx = 0x3FFF;
constexpr std::size_t kMostFurther = 200'000;
constexpr int kMarginPx = 4;

unsigned CodeOf(wchar_t character) {
  return static_cast<unsigned>(static_cast<std::make_unsigned_t<wchar_t>>(character));
}

// True if the shape of the character does not depend on its neighbours.
bool IsLetterByLetter(wchar_t character) {
  struct Codes {
    unsigned First, Last;
  };
  static constexpr Codes kPlain[] = {{0x20, 0x7F},     {0xA0, 0x2FF},    {0x370, 0x482},   {0x48A, 0x52F},
                                     {0x2010, 0x2027}, {0x2030, 0x205E}, {0x20A0, 0x20BF}, {0x2100, 0x2122}};
  const unsigned code = CodeOf(character);
  return std::ranges::any_of(kPlain, [code](Codes plain) { return code >= plain.First && code <= plain.Last; });
}

bool Joins(wchar_t character) {
  return std::wstring_view(L"fijltbhk").find(character) != std::wstring_view::npos;
}
bool IsJoint(wchar_t before, wchar_t character) {
  return (before == L'f' || before == L't' || before == L'T') && Joins(character);
}

// Keys of Further: a text is its own key; the others begin with a character that no text has.
std::wstring PairKey(wchar_t before, wchar_t character) {
  return {L'\1', before, character};
}
std::wstring JoinedKey(std::wstring_view letters) {
  return L'\2' + std::wstring(letters);
}

}  // namespace

std::wstring WithoutControls(std::wstring text) {
  std::ranges::replace_if(
      text, [](wchar_t c) { return CodeOf(c) < L' '; }, L' ');
  return text;
}

TextMeasures::TextMeasures(wxDC& dc) : Dc(dc), Steps((kAscii + 1) * kAscii, kCare) {}

template <typename Char>
std::optional<int> TextMeasures::SumOfSteps(std::basic_string_view<Char> text) {
  unsigned seen = 0, before = kNothingBefore;
  int sum = 0, care = 0;
  for (const Char character : text) {
    const unsigned code = static_cast<std::make_unsigned_t<Char>>(character);
    const int step = Steps[before * kAscii + code % kAscii];
    seen |= code;
    care |= step;
    sum += step >> 1;
    before = code % kAscii;
  }
  if (seen >= kAscii || (care & kCare) != 0) return std::nullopt;
  return sum;
}

template <typename Measure>
int TextMeasures::Known(std::wstring key, Measure measure) {
  if (const auto known = Further.find(key); known != Further.end()) return known->second;
  const int px = measure();
  if (Further.size() >= kMostFurther) Further.clear();
  return Further[std::move(key)] = px;
}

int TextMeasures::WidthWithCare(const std::wstring& text) {
  if (!std::ranges::all_of(text, IsLetterByLetter)) return Known(text, [&] { return MeasurePx(text); });
  int sum = SumPx(text);
  for (std::size_t at = 0; at + 1 < text.size(); ++at) {
    if (!IsJoint(text[at], text[at + 1])) continue;
    std::size_t end = at + 2;
    while (end < text.size() && Joins(text[end])) ++end;
    sum += JoinedMorePx(text, at, end);
    at = end - 1;
  }
  return sum;
}

// The predecessor of the first character is 0.
int TextMeasures::StepPx(wchar_t before, wchar_t character) {
  if (CodeOf(before) >= kAscii || CodeOf(character) >= kAscii)
    return Known(PairKey(before, character), [&] { return MeasureStepPx(before, character); });
  short& step = Steps[(before == L'\0' ? kNothingBefore : CodeOf(before)) * kAscii + CodeOf(character)];
  if (step == kCare) {
    const int px = std::clamp(MeasureStepPx(before, character), -kWidestStepPx, kWidestStepPx);
    step = static_cast<short>(2 * px + (IsJoint(before, character) ? kCare : 0));
  }
  return step >> 1;
}

int TextMeasures::MeasureStepPx(wchar_t before, wchar_t character) {
  if (before == L'\0') return MeasurePx({character});
  return MeasurePx({before, character}) - StepPx(L'\0', before);
}

int TextMeasures::SumPx(std::wstring_view text) {
  int sum = 0;
  for (std::size_t at = 0; at < text.size(); ++at) sum += StepPx(at > 0 ? text[at - 1] : L'\0', text[at]);
  return sum;
}

// The width of a ligature with its neighbours, minus the sum of its steps.
int TextMeasures::JoinedMorePx(std::wstring_view text, std::size_t from, std::size_t end) {
  const std::size_t first = from > 0 ? from - 1 : 0;
  const std::wstring_view letters = text.substr(first, end + 1 - first);
  return Known(JoinedKey(letters), [&] { return MeasurePx(std::wstring(letters)) - SumPx(letters); });
}

int TextMeasures::WidthPx(std::string_view text) {
  const std::optional<int> px = SumOfSteps(text);
  return px ? *px : WidthWithCare(WithoutControls(CodePageToWide(text)));
}

int TextMeasures::WidthPx(std::wstring_view text) {
  const std::optional<int> px = SumOfSteps(text);
  return px ? *px : WidthWithCare(WithoutControls(std::wstring(text)));
}

void WidestText::Offer(std::string_view text) {
  if (const int px = Measures.WidthPx(text); IsWanted(px)) Candidates.emplace(px, CodePageToWide(text));
}

void WidestText::Offer(std::wstring_view text) {
  if (const int px = Measures.WidthPx(text); IsWanted(px)) Candidates.emplace(px, text);
}

// One text of each width near the largest is enough.
bool WidestText::IsWanted(int widthPx) {
  if (widthPx < NearPx || widthPx == LatestPx) return false;
  LatestPx = widthPx;
  LargestPx = std::max(LargestPx, widthPx);
  NearPx = LargestPx - LargestPx / 10 - kMarginPx;
  return !Candidates.contains(widthPx);
}

int WidestText::WidthPx() const {
  int widest = 0;
  for (const auto& [px, text] : Candidates)
    if (px >= NearPx) widest = std::max(widest, Measures.MeasurePx(WithoutControls(text)));
  return widest;
}
