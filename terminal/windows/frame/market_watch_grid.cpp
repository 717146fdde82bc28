#include "terminal/windows/frame/market_watch_grid.h"

#include <wx/settings.h>

#include <utility>

namespace {

constexpr int kFreshTintPercent = 14;

struct TrendColors {
  ColorRef Up;
  ColorRef Down;
};
constexpr TrendColors kOnLight{0x327D2E, 0x2828C6};
constexpr TrendColors kOnDark{0x84C781, 0x7373E5};

}  // namespace

ColorRef TrendColor(Trend trend) {
  const TrendColors& colors = wxSystemSettings::GetAppearance().IsUsingDarkBackground() ? kOnDark : kOnLight;
  return trend == Trend::Up ? colors.Up : colors.Down;
}

MarketWatchGrid::MarketWatchGrid(MarketWatch& rows, std::function<void()> opened)
    : ListGrid(rows, {.Name = L"Market Watch", .FileName = "market_watch", .Empty = L"No securities"}), Watch(rows) {
  Opened = std::move(opened);
}

bool MarketWatchGrid::Create(wxWindow* parent, int id) {
  if (!ListGrid::Create(parent, id)) return false;
  EnableRowHeader(false);
  EnableAlternateRows(true);
  return true;
}

void MarketWatchGrid::Dress(ListRow row, std::size_t column, CQORPGridCell& cell) const {
  const Trend trend = Watch.TrendAt(row, column);
  if (trend == Trend::None) return;
  cell.TextColor = TrendColor(trend);
  const wxColour window = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW);
  if (Watch.IsFresh(row)) cell.Background = Blend(window.GetRGB(), TrendColor(trend), kFreshTintPercent);
}

const WatchRow* MarketWatchGrid::Selected() const {
  const auto row = CurrentRow();
  return row ? &Watch.At(*row) : nullptr;
}

bool MarketWatchGrid::Select(const std::string& securityId) {
  const auto row = Watch.Find(securityId);
  if (!row) return false;
  if (ListGrid::Select(*row)) return true;
  OnFilterBarClearAll();
  return ListGrid::Select(*row);
}
