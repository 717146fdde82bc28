#include "terminal/windows/screen_picture.h"

#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/display.h>
#include <wx/image.h>

#include "terminal/png_file.h"
#include "terminal/terminal_error.h"
#include "terminal/windows/screen_content.h"

namespace {

// Floating bars, dialogs and popups too.
wxRect RectOfWindows(CQORPFrame& frame) {
  wxRect rect = frame.GetRect();
  for (const wxWindow* window : wxTopLevelWindows)
    if (window->IsShown()) rect.Union(window->GetRect());
  wxRect screen;
  for (unsigned display = 0; display < wxDisplay::GetCount(); ++display) screen.Union(wxDisplay(display).GetGeometry());
  return rect.Intersect(screen);
}

wxImage PictureOf(const wxRect& rect) {
  wxBitmap bitmap(rect.width, rect.height, 24);
  wxMemoryDC picture(bitmap);
  wxScreenDC screen;
  ForgetScreenContent(screen);
  picture.Blit(0, 0, rect.width, rect.height, &screen, rect.x, rect.y);
  picture.SelectObject(wxNullBitmap);
  return bitmap.ConvertToImage();
}

}  // namespace

void SavePicture(CQORPFrame& frame, const std::filesystem::path& file) {
  const wxRect rect = RectOfWindows(frame);
  if (rect.IsEmpty()) throw TerminalError(ExitCode::File, PathText(file) + ": no window is on the screen");
  const wxImage image = PictureOf(rect);
  const auto width = static_cast<std::uint32_t>(image.GetWidth());
  const auto height = static_cast<std::uint32_t>(image.GetHeight());
  WritePngFile(file, width, height, {image.GetData(), std::size_t{3} * width * height});
}
