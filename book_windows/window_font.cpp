#include "book_windows/window_font.h"

#include <cstdlib>

#include "foundations/wide_text.h"

wxFont WindowFontOf(const GridFont& block) {
  wxFontInfo info(wxSize(0, std::abs(block.Height) == 0 ? 12 : std::abs(block.Height)));
  info.Weight(block.Weight > 0 ? block.Weight : 400);
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
