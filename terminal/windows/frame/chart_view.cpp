#include "terminal/windows/frame/chart_view.h"

#include <wx/dcbuffer.h>
#include <wx/dcmemory.h>
#include <wx/menu.h>
#include <wx/settings.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fstream>
#include <string_view>
#include <utility>

#include "foundations/paths.h"
#include "terminal/chart/svg_chart.h"
#include "terminal/common/errors.h"
#include "terminal/common/png_file.h"
#include "terminal/windows/frame/dc_canvas.h"
#include "terminal/windows/frame/main_frame.h"
#include "toolkit/dialogs/dialog.h"
#include "toolkit/dialogs/popups.h"

namespace {

constexpr double kZoomStep = 0.8;
constexpr double kMoveStep = 0.1;  // of the width
constexpr float kFontScale = 0.9F;

constexpr int IdOf(ChartCommand command) {
  return static_cast<int>(command);
}

using Item = CQORPMenuItem::Kind;
constexpr CQORPMenuItem kChartMenu[] = {
    {Item::Command, 0, IdOf(ChartCommand::ZoomIn), L"Zoom &In"},
    {Item::Command, 0, IdOf(ChartCommand::ZoomOut), L"Zoom &Out"},
    {Item::Command, 0, IdOf(ChartCommand::WholeDay), L"&Whole Day"},
    {Item::Command, 0, IdOf(ChartCommand::Newest), L"&Newest Trades"},
    {Item::Command, 0, IdOf(ChartCommand::SelectedRows), L"&Range of Selected Rows"},
    {Item::Separator, 0},
    {Item::Command, 0, IdOf(ChartCommand::Save), L"&Save As..."},
};

struct ChartKey {
  int Code;
  ChartCommand Command;
};
constexpr ChartKey kChartKeys[] = {
    {'+', ChartCommand::ZoomIn},
    {'=', ChartCommand::ZoomIn},
    {WXK_NUMPAD_ADD, ChartCommand::ZoomIn},
    {WXK_UP, ChartCommand::ZoomIn},
    {WXK_NUMPAD_UP, ChartCommand::ZoomIn},
    {'-', ChartCommand::ZoomOut},
    {WXK_NUMPAD_SUBTRACT, ChartCommand::ZoomOut},
    {WXK_DOWN, ChartCommand::ZoomOut},
    {WXK_NUMPAD_DOWN, ChartCommand::ZoomOut},
    {WXK_LEFT, ChartCommand::Earlier},
    {WXK_NUMPAD_LEFT, ChartCommand::Earlier},
    {WXK_RIGHT, ChartCommand::Later},
    {WXK_NUMPAD_RIGHT, ChartCommand::Later},
    {WXK_PAGEUP, ChartCommand::PageEarlier},
    {WXK_NUMPAD_PAGEUP, ChartCommand::PageEarlier},
    {WXK_PAGEDOWN, ChartCommand::PageLater},
    {WXK_NUMPAD_PAGEDOWN, ChartCommand::PageLater},
    {'0', ChartCommand::WholeDay},
    {WXK_HOME, ChartCommand::WholeDay},
    {WXK_NUMPAD_HOME, ChartCommand::WholeDay},
    {WXK_END, ChartCommand::Newest},
    {WXK_NUMPAD_END, ChartCommand::Newest},
    {WXK_CONTROL_S, ChartCommand::Save},
};

const ChartTheme& ChartColors() {
  return wxSystemSettings::GetAppearance().IsUsingDarkBackground() ? kDarkChart : kLightChart;
}

// A security's name may hold what a file's name may not.
std::wstring FileNameOf(std::wstring name) {
  for (wchar_t& character : name)
    if (character < L' ' || std::wstring_view(L"/\\:*?\"<>|").find(character) != std::wstring_view::npos)
      character = L'_';
  return name;
}

void SaveText(const std::filesystem::path& file, const std::string& text) {
  errno = 0;
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) ThrowFileError(file, "cannot be written", errno);
}

}  // namespace

ChartView::ChartView(wxWindow* parent, const TradeLedger& ledger, std::function<void()> selectedRows)
    : Chart(ledger), SelectedRows(std::move(selectedRows)) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxBORDER_NONE, L"Chart");
  SetFont(GetFont().Scaled(kFontScale));
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { OnPaint(); });
  Bind(wxEVT_SIZE, [this](wxSizeEvent&) { Redraw(); });
  Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
    event.Skip();
    Redraw();
  });
  Bind(wxEVT_CHAR, &ChartView::OnKey, this);
  Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent& event) {
    const wxPoint middle = ClientToScreen(wxPoint(GetClientSize().x / 2, GetClientSize().y / 2));
    ShowContextMenu(*this, kChartMenu, event.GetPosition() == wxDefaultPosition ? middle : event.GetPosition());
  });
  Bind(wxEVT_MENU, [this](wxCommandEvent& event) { Run(static_cast<ChartCommand>(event.GetId())); });
  BindMouse();
}

void ChartView::BindMouse() {
  Bind(wxEVT_MOUSEWHEEL, &ChartView::OnWheel, this);
  Bind(wxEVT_MOTION, &ChartView::OnMotion, this);
  Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
    SetFocus();
    DragX = event.GetX();
    if (!HasCapture()) CaptureMouse();
  });
  Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { EndDrag(); });
  Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { Run(ChartCommand::WholeDay); });
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { DragX.reset(); });
  Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) {
    Pointer.reset();
    Refresh();
  });
}

void ChartView::ShowChanges() {
  if (Chart.Update()) Redraw();
}

void ChartView::Redraw() {
  Painted = wxBitmap();
  Refresh();
}

// In pixels of the screen.
wxBitmap ChartView::Picture() {
  const wxSize size = GetClientSize();
  wxBitmap picture;
  picture.CreateScaled(std::max(1, size.x), std::max(1, size.y), 24, GetContentScaleFactor());
  wxMemoryDC dc(picture);
  DcCanvas canvas(dc, GetFont(), ChartColors());
  Drawn = DrawChart(Chart.Source(), Chart.Range(), {size.x, size.y}, canvas);
  dc.SelectObject(wxNullBitmap);
  return picture;
}

void ChartView::OnPaint() {
  wxAutoBufferedPaintDC dc(this);
  if (!Painted.IsOk()) Painted = Picture();
  dc.DrawBitmap(Painted, 0, 0);
  DcCanvas canvas(dc, GetFont(), ChartColors());
  if (Pointer) DrawPointer(Drawn, *Pointer, canvas);
}

void ChartView::ZoomBy(double factor, double anchor) {
  Chart.Zoom(factor, anchor);
  ShowChanges();
}

void ChartView::MoveBy(double parts) {
  Chart.Move(parts * Chart.Range().Length());
  ShowChanges();
}

void ChartView::Run(ChartCommand command) {
  const double middle = (Chart.Range().From + Chart.Range().To) / 2;
  switch (command) {
    case ChartCommand::ZoomIn:
      return ZoomBy(kZoomStep, middle);
    case ChartCommand::ZoomOut:
      return ZoomBy(1 / kZoomStep, middle);
    case ChartCommand::Earlier:
      return MoveBy(-kMoveStep);
    case ChartCommand::Later:
      return MoveBy(kMoveStep);
    case ChartCommand::PageEarlier:
      return MoveBy(-1);
    case ChartCommand::PageLater:
      return MoveBy(1);
    case ChartCommand::WholeDay:
      Chart.ShowAll();
      return ShowChanges();
    case ChartCommand::Newest:
      Chart.ShowNewest();
      return ShowChanges();
    case ChartCommand::SelectedRows:
      return SelectedRows();
    case ChartCommand::Save:
      return AskAndSave();
  }
}

void ChartView::OnKey(wxKeyEvent& event) {
  for (const ChartKey& key : kChartKeys)
    if (!event.AltDown() && key.Code == event.GetKeyCode()) return Run(key.Command);
  event.Skip();
}

// A wheel that turns sideways moves.
void ChartView::OnWheel(wxMouseEvent& event) {
  const int delta = std::max(1, event.GetWheelDelta());
  WheelRest += event.GetWheelRotation();
  const int steps = WheelRest / delta;
  WheelRest -= steps * delta;
  if (event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL) return MoveBy(steps * kMoveStep);
  if (!Drawn.IsEmpty()) ZoomBy(std::pow(kZoomStep, steps), Drawn.SecondsAt(event.GetX()));
}

void ChartView::OnMotion(wxMouseEvent& event) {
  Pointer = {event.GetX(), event.GetY()};
  if (DragX && !Drawn.IsEmpty()) {
    MoveBy(static_cast<double>(*DragX - event.GetX()) / Drawn.Prices.Width());
    DragX = event.GetX();
  }
  Refresh();
}

void ChartView::EndDrag() {
  DragX.reset();
  if (HasCapture()) ReleaseMouse();
}

void ChartView::AskAndSave() {
  const FocusReturn focus(*this);
  const std::wstring name = Wide(Utf8OfCodePage(Chart.Name().empty() ? "chart" : Chart.Name()));
  CQORPFileDialog dialog(this, PathOfWide(FileNameOf(name) + L".png"), L".png",
                         L"PNG (*.png)|*.png;*.PNG|SVG (*.svg)|*.svg;*.SVG");
  if (const auto path = dialog.AskForPath()) OrShowFailure(this, [&] { SaveTo(*path); });
}

void ChartView::SaveTo(const std::filesystem::path& file) {
  const wxSize size = GetClientSize();
  const std::wstring extension = wxString(file.extension().wstring()).Lower().ToStdWstring();
  if (extension == L".svg")
    return SaveText(file, ChartSvg(Chart.Source(), {size.x, size.y}, Chart.Range(), ChartColors()));
  if (extension != L".png")
    throw TerminalError(ExitCode::File, PathText(file) + " cannot be written: a chart is saved as .png or .svg");
  const wxImage image = Picture().ConvertToImage();
  const auto width = static_cast<std::uint32_t>(image.GetWidth()),
             height = static_cast<std::uint32_t>(image.GetHeight());
  WritePngFile(file, width, height, {image.GetData(), std::size_t{3} * width * height});
}
