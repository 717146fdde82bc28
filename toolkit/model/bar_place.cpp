#include "toolkit/model/bar_place.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

constexpr std::wstring_view kVersion = L"1";
constexpr std::array<std::wstring_view, 3> kStates = {L"floating", L"docked", L"tabbed"};
constexpr std::array<std::wstring_view, 4> kSides = {L"left", L"right", L"top", L"bottom"};
constexpr std::array<std::wstring_view, 2> kFlags = {L"0", L"1"};

// Window systems use signed 16-bit coordinates.
constexpr int kFarthest = 32767;
constexpr int kLargestProportion = 100'000'000;

struct NumberField {
  int BarPlace::*Field;
  int Lowest, Highest;
};
constexpr NumberField kFloatFields[] = {
    {&BarPlace::Left, -kFarthest, kFarthest},
    {&BarPlace::Top, -kFarthest, kFarthest},
    {&BarPlace::Width, 1, kFarthest},
    {&BarPlace::Height, 1, kFarthest},
};
constexpr NumberField kDockFields[] = {
    {&BarPlace::Layer, 0, kFarthest},     {&BarPlace::Row, 0, kFarthest},
    {&BarPlace::Position, 0, kFarthest},  {&BarPlace::Proportion, 0, kLargestProportion},
    {&BarPlace::DockWidth, 1, kFarthest}, {&BarPlace::DockHeight, 1, kFarthest},
};

// Reads the fields of a line from left to right. Ok stays false after the first invalid field.
class FieldReader {
 public:
  explicit FieldReader(std::wstring_view text) : Rest(text) {}
  bool Ok = true;
  bool AtEnd() const { return Ended; }

  template <std::size_t N>
  std::size_t Word(const std::array<std::wstring_view, N>& words) {
    const std::wstring_view field = Next();
    for (std::size_t i = 0; i < N; ++i)
      if (words[i] == field) return i;
    Ok = false;
    return 0;
  }

  int Number(int lowest, int highest) {
    std::wstring_view field = Next();
    const bool negative = field.starts_with(L'-');
    if (negative) field.remove_prefix(1);
    long value = 0;
    if (field.empty() || field.size() > 9) Ok = false;
    for (std::size_t i = 0; Ok && i < field.size(); ++i) {
      if (field[i] < L'0' || field[i] > L'9') Ok = false;
      value = value * 10 + (field[i] - L'0');
    }
    if (negative) value = -value;
    if (value < lowest || value > highest) Ok = false;
    return Ok ? static_cast<int>(value) : 0;
  }

 private:
  std::wstring_view Next() {
    if (Ended) Ok = false;
    const std::size_t end = Rest.find(L';');
    Ended = end == std::wstring_view::npos;
    const std::wstring_view field = Rest.substr(0, end);
    Rest.remove_prefix(Ended ? Rest.size() : end + 1);
    return field;
  }

  std::wstring_view Rest;
  bool Ended = false;
};

template <typename Fields>
void Append(std::wstring& text, const BarPlace& place, const Fields& fields) {
  for (const NumberField& field : fields) text.append(L";").append(std::to_wstring(place.*field.Field));
}

template <typename Fields>
void Read(FieldReader& reader, BarPlace& place, const Fields& fields) {
  for (const NumberField& field : fields) place.*field.Field = reader.Number(field.Lowest, field.Highest);
}

}  // namespace

std::wstring BarPlaceText(const BarPlace& place) {
  std::wstring text(kVersion);
  text.append(L";").append(kStates[static_cast<std::size_t>(place.State)]);
  text.append(L";").append(kFlags[place.Shown ? 1 : 0]);
  Append(text, place, kFloatFields);
  text.append(L";").append(kSides[static_cast<std::size_t>(place.Side)]);
  Append(text, place, kDockFields);
  return text;
}

std::optional<BarPlace> ParseBarPlace(std::wstring_view text) {
  FieldReader reader(text);
  BarPlace place;
  reader.Word(std::array{kVersion});
  place.State = static_cast<BarState>(reader.Word(kStates));
  place.Shown = reader.Word(kFlags) == 1;
  Read(reader, place, kFloatFields);
  place.Side = static_cast<DockSide>(reader.Word(kSides));
  Read(reader, place, kDockFields);
  if (!reader.Ok || !reader.AtEnd()) return std::nullopt;
  return place;
}

namespace {

constexpr ScreenRect kUsualFloatRect{100, 100, 530, 300};
constexpr int kGripWidth = 40, kGripHeight = 24;

int Overlap(int start, int length, int otherStart, int otherLength) {
  return std::min(start + length, otherStart + otherLength) - std::max(start, otherStart);
}

bool CanBeGripped(const ScreenRect& rect, const ScreenRect& display) {
  return Overlap(rect.Left, rect.Width, display.Left, display.Width) >= std::min(kGripWidth, rect.Width) &&
         Overlap(rect.Top, kGripHeight, display.Top, display.Height) >= kGripHeight / 2;
}

// The extent of all displays together along one axis.
int ExtentOf(std::span<const DisplayArea> displays, int ScreenRect::*start, int ScreenRect::*length) {
  int first = displays.front().Whole.*start, end = first;
  for (const auto& [whole, usable] : displays) {
    first = std::min(first, whole.*start);
    end = std::max(end, whole.*start + whole.*length);
  }
  return end - first;
}

}  // namespace

ScreenRect UsableFloatRect(const ScreenRect& wanted, std::span<const DisplayArea> displays) {
  if (wanted.Width <= 0 || wanted.Height <= 0) return kUsualFloatRect;
  ScreenRect rect = wanted;
  const auto holds = [&wanted](const DisplayArea& display) { return CanBeGripped(wanted, display.Usable); };
  if (std::ranges::none_of(displays, holds)) rect.Left = kUsualFloatRect.Left, rect.Top = kUsualFloatRect.Top;
  if (displays.empty()) return rect;
  rect.Width = std::min(rect.Width, ExtentOf(displays, &ScreenRect::Left, &ScreenRect::Width));
  rect.Height = std::min(rect.Height, ExtentOf(displays, &ScreenRect::Top, &ScreenRect::Height));
  return rect;
}
