#include "toolkit/dialogs/popups.h"

#include <wx/dcclient.h>
#include <wx/display.h>
#include <wx/menu.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

#include "toolkit/start/toolkit_start.h"
#include "toolkit/system/make_child.h"

namespace {

// Own ids, as wxWidgets does not accept every number on every platform.
constexpr int kFirstId = wxID_HIGHEST + 1;

class ContextMenu {
 public:
  ContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items) : Owner(owner), Items(items) {
    wxMenu* level = &Menu;
    for (std::size_t i = 0; i < Items.size(); ++i) {
      if (Items[i].Level == 0) level = &Menu;
      level = AddItem(*level, kFirstId + static_cast<int>(i), Items[i]);
    }
    Menu.Bind(wxEVT_MENU, [this](wxCommandEvent& event) { Chosen = event.GetId() - kFirstId; });
  }

  void Show(const wxPoint& point) {
    Owner.PopupMenu(&Menu, Owner.ScreenToClient(point));
    RunChosen();
  }

  bool Choose(const std::vector<std::wstring>& texts) {
    const wxMenuItem* item = Find(texts);
    if (item == nullptr || !item->IsEnabled()) return false;
    Chosen = item->GetId() - kFirstId;
    return RunChosen();
  }

 private:
  // Returns the menu of the next item.
  wxMenu* AddItem(wxMenu& level, int id, const CQORPMenuItem& item) {
    switch (item.What) {
      case CQORPMenuItem::Kind::Separator:
        level.AppendSeparator();
        break;
      case CQORPMenuItem::Kind::Submenu: {
        wxMenu& submenu = MakeChild<wxMenu>();
        level.AppendSubMenu(&submenu, item.Text);
        return &submenu;
      }
      case CQORPMenuItem::Kind::Command:
        Update(*level.Append(id, item.Text), item.Id);
        break;
    }
    return &level;
  }

  void Update(wxMenuItem& entry, int id) {
    wxUpdateUIEvent update(id);
    update.SetEventObject(&Owner);
    Owner.GetEventHandler()->ProcessEvent(update);
    if (update.GetSetEnabled()) entry.Enable(update.GetEnabled());
    if (update.GetSetText()) entry.SetItemLabel(update.GetText());
  }

  const wxMenuItem* Find(const std::vector<std::wstring>& texts) const {
    const wxMenu* level = &Menu;
    const wxMenuItem* found = nullptr;
    for (const std::wstring& text : texts) {
      if (level == nullptr) return nullptr;
      found = nullptr;
      for (const wxMenuItem* item : level->GetMenuItems())
        if (!item->IsSeparator() && item->GetItemLabelText() == text) found = item;
      if (found == nullptr) return nullptr;
      level = found->GetSubMenu();
    }
    return level == nullptr ? found : nullptr;
  }

  bool RunChosen() {
    if (Chosen < 0) return false;
    wxCommandEvent command(wxEVT_MENU, Items[static_cast<std::size_t>(Chosen)].Id);
    command.SetEventObject(&Owner);
    return Owner.GetEventHandler()->ProcessEvent(command);
  }

  wxWindow& Owner;
  std::span<const CQORPMenuItem> Items;
  wxMenu Menu;
  int Chosen = -1;
};

}  // namespace

void ShowContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items, const wxPoint& point) {
  ContextMenu(owner, items).Show(point);
}

bool ChooseFromContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items,
                           const std::vector<std::wstring>& texts) {
  return ContextMenu(owner, items).Choose(texts);
}

namespace {

constexpr int kGapPx = 10;
constexpr int kLinePx = 320;
constexpr int kSteps = 8;
constexpr long kStyle = wxFRAME_NO_TASKBAR | wxFRAME_TOOL_WINDOW | wxSTAY_ON_TOP | wxBORDER_SIMPLE;

// The height of the popups that are already shown.
int StackedHeight(const wxWindow* besides) {
  int height = 0;
  for (wxWindow* window : wxTopLevelWindows)
    if (window != besides && window->IsShown() && dynamic_cast<CQORPPopupWindow*>(window) != nullptr)
      height += window->GetSize().y + kGapPx;
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
  GetSizer()->AddSpacer(kGapPx);
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
  line.Wrap(kLinePx);
  line.Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { Close(true); });
  GetSizer()->Add(&line, wxSizerFlags().Border(wxLEFT | wxTOP | wxRIGHT, kGapPx));
}

void CQORPPopupWindow::ShowInCorner() {
  const wxRect screen = ScreenOf(GetParent());
  const int top = screen.GetBottom() - GetSize().y - kGapPx - StackedHeight(this);
  Move(screen.GetRight() - GetSize().x - kGapPx, std::max(screen.y, top));
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

// Paints into the window: a new window would be painted by the event loop only.
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
