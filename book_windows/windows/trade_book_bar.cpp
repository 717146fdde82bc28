#include "book_windows/windows/trade_book_bar.h"

#include <wx/dcclient.h>
#include <wx/settings.h>

#include "book_windows/windows/book_list.h"
#include "foundations/text_tools.h"

CTradeBookBar::CTradeBookBar(BookList& list, std::string bookName) : List(list), BookName(std::move(bookName)) {}

// A layout that loses a bar resizes it: that has to come while it still is a book.
CTradeBookBar::~CTradeBookBar() {
  ShowControlBar(false);
  List.ForgetBar(*this);
}

bool CTradeBookBar::CreateBook(CQORPDockingManager& manager, const wxRect& rect, std::uint32_t id) {
  if (!CreateBar(manager, NarrowToWide(std::string(BookName)), rect, id)) return false;
  auto dialog = new CDlgTradeBook(List, *this);
  if (!dialog->CreateOn(*this)) return false;
  Dialog = dialog;
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

void CTradeBookBar::FollowState() {
  const BookState& state = Grid()->State;
  Grid()->Rows.Filtered = state.Filtered;
  ProfileKey = state.Key(BookName, GetDlgCtrlID());
  const std::wstring title = NarrowToWide(state.Title());
  SetBarTitle(title);
  Grid()->NameForReaders(title);
  Dialog->ShowAverages(state.ShowsAverages());
}

void CTradeBookBar::RefreshBook(bool replaced) {
  if (!HasGrid()) return;
  Grid()->RefreshRows(replaced);
  if (replaced) Grid()->RecountTotals();
  ShowSummary();
  Grid()->RedrawRows();
}

void CTradeBookBar::ShowSummary() {
  Dialog->ShowSummary(Grid()->Line);
}

void CTradeBookBar::CloseByEscape() {
  if (GetParentMiniFrame() != nullptr) List.CloseBook(*this, BookList::Close::HideBar);
}

void CTradeBookBar::NarrowToFilter() {
  List.NarrowToFilter(*this);
}

// The toolkit's own action is not run: the list hides the bar, or leaves one alone that is none of its books.
void CTradeBookBar::OnPressCloseButton() {
  List.CloseBook(*this, BookList::Close::HideBar);
}

// The tab goes on closing even where the bar is in no list.
int CTradeBookBar::OnTabCloseButton() {
  List.CloseBook(*this, BookList::Close::LeaveToTab);
  return 1;
}

// Alt keys are the terminal's.
bool CTradeBookBar::PreTranslateMessage(wxKeyEvent& event) {
  if (event.AltDown() || event.GetKeyCode() != WXK_ESCAPE) return false;
  CloseByEscape();
  return true;
}

void CTradeBookBar::OnBarFocus() {
  if (List.Host().ApplicationFocus) List.Host().ApplicationFocus(this, false);
  if (HasGrid()) Grid()->SetFocus();
}

namespace {
constexpr int kStateIndex = 1;
}

CVELDMDIChildWnd::CVELDMDIChildWnd(wxWindow* parent) : CQORPMDIChildWnd(parent) {
  Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
    event.Skip();
    if (GetBar() != nullptr) GetBar()->SetFocus();
  });
}

bool CVELDSDockingControlBar::LoadState(CQORPRegistry& settings, const std::wstring& /*section*/, int /*index*/,
                                        std::uint32_t id) {
  return CQORPDockingControlBar::LoadState(settings, NarrowToWide(std::string(ProfileKey)), kStateIndex, id);
}

bool CVELDSDockingControlBar::SaveState(CQORPRegistry& settings, const std::wstring& /*section*/, int /*index*/,
                                        std::uint32_t id) {
  return CQORPDockingControlBar::SaveState(settings, NarrowToWide(std::string(ProfileKey)), kStateIndex, id);
}
