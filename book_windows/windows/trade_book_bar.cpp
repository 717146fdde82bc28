#include "book_windows/windows/trade_book_bar.h"

#include <wx/dcclient.h>
#include <wx/settings.h>

#include "book_windows/windows/book_screen.h"
#include "platform/locale.h"
#include "toolkit/system/make_child.h"

namespace {
constexpr int kStateIndex = 1;
}

CVELDMDIChildWnd::CVELDMDIChildWnd(wxWindow* parent) : CQORPMDIChildWnd(parent) {
  Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
    event.Skip();
    if (GetBar() != nullptr) GetBar()->SetFocus();
  });
}

CQORPMDIChildWnd* CVELDSDockingControlBar::CreateTabbedFrame(wxWindow* parent) {
  return &MakeChild<CVELDMDIChildWnd>(parent);
}

bool CVELDSDockingControlBar::LoadState(CQORPRegistry& settings, const std::wstring& /*section*/, int /*index*/,
                                        std::uint32_t id) {
  return CQORPDockingControlBar::LoadState(settings, CodePageToWide(ProfileKey()), kStateIndex, id);
}

bool CVELDSDockingControlBar::SaveState(CQORPRegistry& settings, const std::wstring& /*section*/, int /*index*/,
                                        std::uint32_t id) {
  return CQORPDockingControlBar::SaveState(settings, CodePageToWide(ProfileKey()), kStateIndex, id);
}

CTradeBookBar::CTradeBookBar(TradeBookScreen& screen, Book& book) : Shown(book), Screen(screen) {}

// Leaving the layout resizes the bar, which needs its windows; these need the book.
CTradeBookBar::~CTradeBookBar() {
  ShowControlBar(false);
  DestroyChildren();
  Screen.Registry.ForgetBook(Shown);
}

bool CTradeBookBar::CreateBook(CQORPDockingManager& manager, const wxRect& rect, std::uint32_t id) {
  if (!CreateBar(manager, CodePageToWide(Shown.Name), rect, id)) return false;
  auto& dialog = MakeChild<CDlgTradeBook>(Screen, Shown);
  if (!dialog.CreateOn(*this)) return false;
  Dialog = &dialog;
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    PlaceDialog();
  });
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { DrawFrame(); });
  PlaceDialog();
  return true;
}

void CTradeBookBar::PlaceDialog() {
  const wxSize size = GetClientSize();
  Dialog->SetSize(1, 1, std::max(0, size.x - 2), std::max(0, size.y - 2));
  Refresh();
}

// One pixel around the dialog.
void CTradeBookBar::DrawFrame() {
  wxPaintDC dc(this);
  dc.SetPen(wxPen(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNSHADOW)));
  dc.SetBrush(*wxTRANSPARENT_BRUSH);
  dc.DrawRectangle(Dialog->GetRect().Inflate(1));
}

const std::string& CTradeBookBar::ProfileKey() const {
  return Shown.ProfileKey;
}

void CTradeBookBar::OnTitleChanged() {
  const std::wstring title = CodePageToWide(Shown.State.Title());
  SetBarTitle(title);
  Grid()->NameForReaders(title);
  Dialog->ShowAverages(Shown.State.ShowsAverages());
}

void CTradeBookBar::OnRowsChanged(bool replaced) {
  Grid()->RefreshRows(replaced);
  Grid()->RedrawRows();
}

int CTradeBookBar::CurrentRow() {
  Grid()->FollowNewRows();
  return Grid()->GetCurSel();
}

bool CTradeBookBar::HoldsFocus() const {
  for (const wxWindow* window = wxWindow::FindFocus(); window != nullptr; window = window->GetParent())
    if (window == Grid()) return true;
  return false;
}

BookPlace CTradeBookBar::Place() const {
  const wxRect rect = GetScreenRect();
  return {IsDocked(), IsMDITabbed(), {rect.x, rect.y, rect.x + rect.width, rect.y + rect.height}};
}

// The toolkit's own action is not run: the registry hides the bar, or ignores one that is none of its books.
void CTradeBookBar::OnPressCloseButton() {
  Screen.Registry.CloseBook(Shown, BookRegistry::Close::HideBar);
}

// The tab closes even if the bar is in no list.
int CTradeBookBar::OnTabCloseButton() {
  Screen.Registry.CloseBook(Shown, BookRegistry::Close::LeaveToTab);
  return 1;
}

// Alt keys are the terminal's.
bool CTradeBookBar::PreTranslateMessage(wxKeyEvent& event) {
  if (event.AltDown() || event.GetKeyCode() != WXK_ESCAPE) return false;
  Screen.Registry.CloseByEscape(Shown);
  return true;
}

void CTradeBookBar::OnBarFocus() {
  Screen.Host.ApplicationFocus(this, false);
  if (Dialog != nullptr) Grid()->SetFocus();
}
