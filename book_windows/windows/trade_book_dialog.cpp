#include "book_windows/windows/trade_book_dialog.h"

#include <algorithm>

#include "toolkit/system/make_child.h"

namespace {

constexpr int kSummaryHeightPx = 25;  // at 100 %, as the heights of the font
constexpr int kLargestFontPx = 13, kSmallestFontPx = 8;

// A separate window: on wxGTK a tool tip of the dialog would also show over the grid.
class SummaryStrip : public wxPanel {
 public:
  explicit SummaryStrip(wxWindow& dialog)
      : wxPanel(&dialog, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxCLIP_CHILDREN) {
    SetBackgroundColour(dialog.GetBackgroundColour());
  }
  bool AcceptsFocus() const override { return false; }
};

}  // namespace

CDlgTradeBook::CDlgTradeBook(TradeBookScreen& screen, Book& book)
    : Grid(&MakeChild<CTradeBookGrid>(screen, book)), Shown(book) {}

bool CDlgTradeBook::CreateOn(wxWindow& bar) {
  if (!CreateChild(&bar, kBookDialog, kBookDialogWidth, kBookDialogHeight, kBookDialogControls)) return false;
  GetStatic(kGridPlace)->Hide();  // it only keeps the grid's place
  if (!Grid->Create(this, 1)) return false;
  MakeStrip();
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    PlaceControls();
  });
  PlaceControls();
  ShowAverages(Shown.State.ShowsAverages());
  return true;
}

void CDlgTradeBook::MakeStrip() {
  Strip = &MakeChild<SummaryStrip>(*this);
  TellUnderPointer(*Strip);
  const wxFont font = SummaryFont();
  for (const DialogControl& control : kLineControls) {
    CQORPStatic* text = GetStatic(control.Id);
    text->Reparent(Strip);
    text->SetFont(font);
    text->LeaveToolTip();
    TellUnderPointer(*text);
  }
}

// The template asks for a bold font of five pixels, which is unreadable today: the largest one that fits replaces it.
wxFont CDlgTradeBook::SummaryFont() const {
  const auto bold = [this](int heightPx) { return wxFont(wxFontInfo(wxSize(0, FromDIP(heightPx))).Bold()); };
  int heightPx = kLargestFontPx;
  while (heightPx > kSmallestFontPx && !LineFits(bold(heightPx))) --heightPx;
  return bold(heightPx);
}

bool CDlgTradeBook::LineFits(const wxFont& font) const {
  return std::ranges::all_of(kLineControls, [&](const DialogControl& control) {
    int width = 0, height = 0;
    GetTextExtent(control.Text, &width, &height, nullptr, nullptr, &font);
    const wxSize room = PlaceInStrip(control).GetSize();
    return width <= room.x && height <= room.y;
  });
}

// Rounds edges, not lengths: controls that touch in units touch in pixels.
wxRect CDlgTradeBook::PlaceInStrip(const DialogControl& control) const {
  const auto across = [this](int units) { return (FromDIP(units * kFourUnitsPx) + 2) / 4; };
  const auto down = [this](int units) { return (FromDIP(units * kEightUnitsPx) + 4) / 8; };
  const int top = down(kBookDialogHeight) - FromDIP(kSummaryHeightPx);
  return {wxPoint(across(control.X), down(control.Y) - top),
          wxPoint(across(control.X + control.Width) - 1, down(control.Y + control.Height) - top - 1)};
}

void CDlgTradeBook::PlaceControls() {
  const wxSize size = GetClientSize();
  const int stripHeight = FromDIP(kSummaryHeightPx), gridHeight = std::max(0, size.y - stripHeight);
  Grid->SetSize(0, 0, size.x, gridHeight);
  Strip->SetSize(0, gridHeight, size.x, stripHeight);
  for (const DialogControl& control : kLineControls) GetStatic(control.Id)->SetSize(PlaceInStrip(control));
}

void CDlgTradeBook::ShowSummary() {
  SummaryLine& line = Shown.Line;
  const GridSettings& colors = Shown.Settings;
  bool changed = false;
  for (const SummaryControl& control : kSummaryControls) {
    const SummaryLine::Control& total = line.Of(control.Value);
    if (!total.Changed) continue;
    changed = true;
    CQORPStatic* text = GetStatic(control.Id);
    text->SetWindowText(line.TextOf(control.Value));
    if (total.Color) text->SetTextColor(*total.Color == TradeColor::Buy ? colors.BuyColor : colors.SellColor);
  }
  line.ClearChanged();
  if (changed) TellAllTotals();
}

void CDlgTradeBook::ShowAverages(bool shown) {
  for (const int id : kAverageControls) GetStatic(id)->Show(shown);
  TellAllTotals();
}

// On Windows a control hides the tool tip of the window below it, so each has its own. Only the one under the pointer
// is updated: a beat has no time for all.
void CDlgTradeBook::TellUnderPointer(wxWindow& window) {
  window.Bind(wxEVT_ENTER_WINDOW, [this, &window](wxMouseEvent& event) {
    event.Skip();
    Pointed = &window;
    TellAllTotals();
  });
  window.Bind(wxEVT_LEAVE_WINDOW, [this, &window](wxMouseEvent& event) {
    event.Skip();
    if (Pointed == &window) Pointed = nullptr;
  });
}

// A narrow book shows only part of the line, and none shows what the selected rows come to.
void CDlgTradeBook::TellAllTotals() {
  if (Pointed == nullptr) return;
  std::wstring all = Shown.Line.AllTotals(GetStatic(kAverageControls[0])->IsShown());
  const std::vector<std::wstring>& selected = Grid->SelectionTexts();
  if (!selected.empty()) all += L"\n\nSelected";
  for (const std::wstring& text : selected) all += L"\n" + text;
  Pointed->SetToolTip(all);
}
