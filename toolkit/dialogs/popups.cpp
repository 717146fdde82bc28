#include "toolkit/dialogs/popups.h"

#include <wx/dcclient.h>
#include <wx/display.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

#include "toolkit/start/toolkit_start.h"
#include "toolkit/system/make_child.h"

namespace {

constexpr int kMarginPx = 10;
constexpr int kTextWidthPx = 320;
constexpr int kSteps = 8;
constexpr long kStyle = wxFRAME_NO_TASKBAR | wxFRAME_TOOL_WINDOW | wxSTAY_ON_TOP | wxBORDER_SIMPLE;

// The height that popups on show take up already.
int StackedHeight(const wxWindow* besides) {
  int height = 0;
  for (wxWindow* window : wxTopLevelWindows)
    if (window != besides && window->IsShown() && dynamic_cast<CQORPPopupWindow*>(window) != nullptr)
      height += window->GetSize().y + kMarginPx;
  return height;
}

wxRect ScreenOf(wxWindow* window) {
  const int display = window == nullptr ? wxNOT_FOUND : wxDisplay::GetFromWindow(window);
  return wxDisplay(display == wxNOT_FOUND ? 0U : static_cast<unsigned>(display)).GetClientArea();
}

}  // namespace

CQORPPopupWindow::CQORPPopupWindow(wxWindow* parent, const std::wstring& caption, const std::wstring& text,
                                   const CQORPPopupWndParams& params)
    : wxFrame(parent, wxID_ANY, caption, wxDefaultPosition, wxDefaultSize, kStyle), Params(params) {
  SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_INFOBK));
  SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_INFOTEXT));
  SetSizer(&MakeChild<wxBoxSizer>(wxVERTICAL));
  if (!caption.empty()) AddLine(caption, true);
  AddLine(text, false);
  GetSizer()->AddSpacer(kMarginPx);
  GetSizer()->SetSizeHints(this);
  AppearTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Appear(); });
  CloseTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Close(true); });
  Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { Close(true); });
}

void CQORPPopupWindow::AddLine(const std::wstring& text, bool isCaption) {
  wxStaticText& line = MakeChild<wxStaticText>(this, wxID_ANY, wxEmptyString);
  line.SetForegroundColour(GetForegroundColour());
  line.SetLabelText(text);
  if (isCaption) line.SetFont(Params.SmallCaption ? line.GetFont().Smaller() : line.GetFont().Bold());
  line.Wrap(kTextWidthPx);
  line.Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { Close(true); });
  GetSizer()->Add(&line, wxSizerFlags().Border(wxLEFT | wxTOP | wxRIGHT, kMarginPx));
}

void CQORPPopupWindow::ShowInCorner() {
  const wxRect screen = ScreenOf(GetParent());
  const int top = screen.GetBottom() - GetSize().y - kMarginPx - StackedHeight(this);
  Move(screen.GetRight() - GetSize().x - kMarginPx, std::max(screen.y, top));
  if (Params.AnimationType == 1 && CanSetTransparent()) {
    AppearTimer.Start(std::max(1, Params.AnimationSpeedMs));
  } else {
    Opacity = Params.Transparency;
  }
  if (CanSetTransparent()) SetTransparent(static_cast<wxByte>(Opacity));
  ShowWithoutActivating();
  CloseTimer.StartOnce(std::max(1, Params.AutoCloseMs));
}

void CQORPPopupWindow::Appear() {
  Opacity = std::min(Params.Transparency, Opacity + std::max(1, Params.Transparency / kSteps));
  SetTransparent(static_cast<wxByte>(Opacity));
  if (Opacity == Params.Transparency) AppearTimer.Stop();
}

void ShowCQORPPopupWindow(wxWindow* parent, const std::wstring& caption, const std::wstring& text,
                          const CQORPPopupWndParams& params) {
  if (!StartToolkit()) return;
  // It destroys itself when it closes.
  MakeChild<CQORPPopupWindow>(parent, caption, text, params).ShowInCorner();
}

namespace {

constexpr int kPaddingPx = 6;

}  // namespace

CQORPProgressOverlay::~CQORPProgressOverlay() {
  if (Shown >= 0) Window.Refresh();
}

// Not as a window of its own: a new one is painted by the event loop only.
void CQORPProgressOverlay::ShowProgress(const std::wstring& text, int percent) {
  if (percent == Shown) return;
  Shown = percent;
  const std::wstring line = text + L" " + std::to_wstring(percent) + L" %";
  {
    wxClientDC dc(&Window);
    dc.SetFont(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT));
    const int padding = Window.FromDIP(kPaddingPx);
    const int height = dc.GetCharHeight() + 2 * padding;
    const wxSize size = Window.GetClientSize();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE)));
    dc.DrawRectangle(0, size.y - height, size.x, height);
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
    dc.DrawRectangle(0, size.y - padding, size.x * percent / 100, padding);
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT));
    dc.DrawText(line, padding, size.y - height + padding / 2);
  }
  Window.Update();
}
