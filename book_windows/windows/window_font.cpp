#include "book_windows/windows/window_font.h"

#include <algorithm>
#include <cstdlib>

#include "foundations/text_tools.h"

namespace {

constexpr std::int32_t kUsualPx = 12, kMostPx = 200, kMostWeight = 1000;

// A stored height may be any number.
int PixelsOf(std::int32_t height) {
  const std::int32_t pixels = std::abs(std::clamp(height, -kMostPx, kMostPx));
  return pixels == 0 ? kUsualPx : pixels;
}

}  // namespace

wxFont WindowFontOf(const GridFont& block) {
  wxFontInfo info(wxSize(0, PixelsOf(block.Height)));
  info.Weight(block.Weight > 0 ? std::min(block.Weight, kMostWeight) : 400);
  info.Italic(block.Italic != 0).Underlined(block.Underline != 0).Strikethrough(block.StrikeOut != 0);
  info.FaceName(Utf16ToWide(block.FaceName));
  return wxFont(info);
}

GridFont FontBlockOf(const wxFont& font) {
  GridFont block;
  block.Height = -font.GetPixelSize().y;
  block.Weight = font.GetNumericWeight();
  block.Italic = font.GetStyle() == wxFONTSTYLE_NORMAL ? 0 : 1;
  block.Underline = font.GetUnderlined() ? 1 : 0;
  block.StrikeOut = font.GetStrikethrough() ? 1 : 0;
  SetFaceName(block, font.GetFaceName().ToStdWstring());
  return block;
}
