// BarPlace: the place of a docking bar as a value, its line of text in the settings, and where on the screen a floating
// bar may stand.
//
//   line  := "1" ";" state ";" shown ";" left ";" top ";" width ";" height ";" side ";" layer ";" row ";" position ";"
//            proportion ";" dock-width ";" dock-height
//   state := "floating" | "docked" | "tabbed"      shown := "0" | "1"      side := "left" | "right" | "top" | "bottom"
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

enum class DockSide { Left, Right, Top, Bottom };
enum class BarState { Floating, Docked, Tabbed };

struct BarPlace {
  BarState State = BarState::Floating;
  bool Shown = false;
  // The mini frame's rectangle on the screen in pixels, kept while the bar stands elsewhere.
  int Left = 0, Top = 0, Width = 0, Height = 0;
  // The place among docked bars, kept while the bar stands elsewhere: a side has layers, a layer rows, a row positions;
  // the proportion is the bar's share of its row.
  DockSide Side = DockSide::Left;
  int Layer = 0, Row = 0, Position = 0, Proportion = 0;
  int DockWidth = 0, DockHeight = 0;

  bool operator==(const BarPlace&) const = default;
};

std::wstring BarPlaceText(const BarPlace& place);

// Empty for any text that BarPlaceText cannot have written: a field too few or too many, a word or number out of range.
std::optional<BarPlace> ParseBarPlace(std::wstring_view text);

// A rectangle in pixels of the screen.
struct ScreenRect {
  int Left = 0, Top = 0, Width = 0, Height = 0;
  bool operator==(const ScreenRect&) const = default;
};

struct DisplayArea {
  ScreenRect Whole;
  ScreenRect Usable;  // without the system's own bars
};

// The wanted rectangle if the user can see it and grip its upper edge with the mouse on one of the displays, otherwise
// one of the same size at the usual place; never larger than all displays together. The usual one for no area.
ScreenRect UsableFloatRect(const ScreenRect& wanted, std::span<const DisplayArea> displays);
