#include "terminal/windows/drivers/screen_picture.h"

#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/display.h>
#include <wx/image.h>
#include <wx/window.h>

#include <fstream>
#include <system_error>

#include "platform/memory.h"
#include "terminal/common/errors.h"
#include "terminal/common/png_file.h"
#include "terminal/windows/frame/window_tools.h"

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

namespace {

// Counts the window and its children but no top-level windows, which are counted apart.
std::size_t CountFrom(const wxWindow& window) {
  std::size_t count = 1;
  for (const wxWindow* child : window.GetChildren())
    if (!child->IsTopLevel()) count += CountFrom(*child);
  return count;
}

std::size_t CountWindows() {
  std::size_t count = 0;
  for (const wxWindow* window : wxTopLevelWindows) count += CountFrom(*window);
  return count;
}

}  // namespace

std::string AppendUsage(const std::filesystem::path& file, const std::string& name, std::size_t openBooks) {
  const ProcessUsage usage = MeasureProcess();
  std::error_code ignored;
  const bool isNew = !std::filesystem::exists(file, ignored);
  std::ofstream lines(file, std::ios::binary | std::ios::app);
  if (isNew) lines << "name,heap,handles,windows,books\n";
  lines << name << ',' << usage.HeapBytes << ',' << usage.Handles << ',' << CountWindows() << ',' << openBooks << '\n';
  lines.close();
  return lines.fail() ? "the usage cannot be written to " + file.filename().string() : "";
}
