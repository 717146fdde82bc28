#include "book_windows/trade_book_dialog.h"

#include "book_windows/book_dialog_template.h"

namespace {

constexpr int kSummaryHeightPx = 25;  // at 100 %
constexpr int kSummaryPoints = 8;

}  // namespace

CDlgTradeBook::CDlgTradeBook(BookList& list, CTradeBookBar& parentBar) : Grid(new CTradeBookGrid(list, parentBar)) {}

bool CDlgTradeBook::CreateOn(wxWindow& bar) {
  if (!CreateChild(&bar, kBookDialog, kBookDialogWidth, kBookDialogHeight, kBookDialogControls)) return false;
  GetStatic(kGridPlace)->Hide();  // it only keeps the grid's place
  if (!Grid->Create(this, 1)) return false;
  for (const DialogControl& control : kBookDialogControls)
    if (control.Id != kGridPlace) AddAnchor(GetStatic(control.Id), {.MoveYPercent = 100});
  SetSummaryFont();
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    PlaceGrid();
  });
  PlaceGrid();
  return true;
}

// The template's font is a bold one of five units, which no screen of today can show: the smallest that reads well
// stands for it.
void CDlgTradeBook::SetSummaryFont() {
  const wxFont font(wxFontInfo(kSummaryPoints).Bold());
  for (const DialogControl& control : kBookDialogControls)
    if (control.Id != kGridPlace) GetStatic(control.Id)->SetFont(font);
}

void CDlgTradeBook::PlaceGrid() {
  AdjustControlsLayout();
  const wxSize size = GetClientSize();
  Grid->SetSize(0, 0, size.x, std::max(0, size.y - FromDIP(kSummaryHeightPx)));
}

void CDlgTradeBook::ShowSummary(SummaryLine& line) {
  const GridSettings& colors = Grid->Properties.Settings;
  for (const SummaryControl& control : kSummaryControls) {
    const SummaryLine::Control& total = line.Of(control.Value);
    if (!total.Changed) continue;
    CQORPStatic* text = GetStatic(control.Id);
    text->SetWindowText(line.TextOf(control.Value));
    if (total.Color) text->SetTextColor(*total.Color == TradeColor::Buy ? colors.BuyColor : colors.SellColor);
  }
  line.ClearChanged();
}

void CDlgTradeBook::ShowAverages(bool shown) {
  for (const int id : kAverageControls) GetStatic(id)->Show(shown);
}
