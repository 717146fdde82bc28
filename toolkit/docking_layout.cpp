#include "toolkit/docking_layout.h"

#include <wx/aui/dockart.h>
#include <wx/aui/floatpane.h>
#include <wx/frame.h>
#include <wx/settings.h>

#include <memory>

namespace {

const wxSize kSmallestMiniFrame{120, 60};

struct CaptionColour {
  int Id;
  wxSystemColour Colour;
};
constexpr CaptionColour kCaptionColours[] = {
    {wxAUI_DOCKART_ACTIVE_CAPTION_COLOUR, wxSYS_COLOUR_HIGHLIGHT},
    {wxAUI_DOCKART_ACTIVE_CAPTION_TEXT_COLOUR, wxSYS_COLOUR_HIGHLIGHTTEXT},
    {wxAUI_DOCKART_INACTIVE_CAPTION_COLOUR, wxSYS_COLOUR_BTNFACE},
    {wxAUI_DOCKART_INACTIVE_CAPTION_TEXT_COLOUR, wxSYS_COLOUR_BTNTEXT},
};

class MiniFrame : public wxAuiFloatingFrame {
 public:
  MiniFrame(wxWindow* parent, DockingLayout& layout, const wxAuiPaneInfo& pane)
      : wxAuiFloatingFrame(parent, &layout, pane), Layout(layout), Content(pane.window) {}

 protected:
  // Behind this the frame may be gone, as its bar was dropped at a side.
  void OnMoveFinished() override {
    if (Layout.OnDragged) Layout.OnDragged(Content, GetPosition());
    wxAuiFloatingFrame::OnMoveFinished();
  }

 private:
  DockingLayout& Layout;
  wxWindow* Content;
};

}  // namespace

DockingLayout::DockingLayout(wxFrame& frame) : wxAuiManager(&frame, wxAUI_MGR_DEFAULT | wxAUI_MGR_ALLOW_ACTIVE_PANE) {
  LimitDocks(kUsualShare);
  TakeThemeColours();
  frame.Bind(wxEVT_SYS_COLOUR_CHANGED, &DockingLayout::OnThemeChanged, this);
}

void DockingLayout::OnThemeChanged(wxSysColourChangedEvent& event) {
  TakeThemeColours();
  event.Skip();
}

// wx 3.2: the captions' own colours leave their text hardly readable with some themes.
void DockingLayout::TakeThemeColours() {
  wxAuiDockArt& art = *GetArtProvider();
  art.SetMetric(wxAUI_DOCKART_GRADIENT_TYPE, wxAUI_GRADIENT_NONE);
  for (const CaptionColour& row : kCaptionColours) art.SetColour(row.Id, wxSystemSettings::GetColour(row.Colour));
}

wxWindow* DockingLayout::CaptionAt(const wxPoint& point) {
  const wxAuiDockUIPart* part = HitTest(point.x, point.y);
  return part != nullptr && part->type == wxAuiDockUIPart::typeCaption && part->pane != nullptr ? part->pane->window
                                                                                                : nullptr;
}

// wx 3.2: a mini frame takes the size that the bar had while docked for its smallest.
void DockingLayout::PlaceMiniFrame(const wxAuiPaneInfo& pane, const wxRect& rect) {
  if (pane.frame == nullptr) return;
  pane.frame->SetMinSize(kSmallestMiniFrame);
  pane.frame->SetSize(rect);
}

wxAuiFloatingFrame* DockingLayout::CreateFloatingFrame(wxWindow* parent, const wxAuiPaneInfo& pane) {
  // The layout destroys it.
  wxAuiFloatingFrame* frame = std::make_unique<MiniFrame>(parent, *this, pane).release();
  // The smallest size is set behind this call.
  frame->CallAfter([frame] { frame->SetMinSize(kSmallestMiniFrame); });
  return frame;
}
