#include "terminal/windows/frame/positions_bar.h"

#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "terminal/common/numbers.h"
#include "toolkit/system/make_child.h"

namespace {

Trend TrendOfSign(int sign) {
  return sign > 0 ? Trend::Up : (sign < 0 ? Trend::Down : Trend::None);
}

}  // namespace

PositionsGrid::PositionsGrid(PositionList& rows)
    : ListGrid(rows, {.Name = L"Positions", .FileName = "positions"}), Positions(rows) {}

bool PositionsGrid::Create(wxWindow* parent, int id) {
  if (!ListGrid::Create(parent, id)) return false;
  EnableRowHeader(false);
  EnableAlternateRows(true);
  SetColumnVisible(static_cast<int>(PositionList::kClientColumn), Positions.Settings().ByClient);
  Bind(wxEVT_UPDATE_UI, [this](wxUpdateUIEvent& event) {
    const PositionSettings& now = Positions.Settings();
    if (event.GetId() == kByClient) event.SetText(now.ByClient ? L"By &Security" : L"By C&lient");
    if (event.GetId() == kMethod)
      event.SetText(now.Method == CostMethod::Average ? L"First &In, First Out" : L"&Average Cost");
    event.Skip();
  });
  return true;
}

const LedgerSecurity* PositionsGrid::Selected() const {
  const auto row = CurrentRow();
  return row ? &Positions.SecurityAt(*row) : nullptr;
}

// A column that is hidden must not filter.
void PositionsGrid::Use(const PositionSettings& settings) {
  constexpr int kClient = static_cast<int>(PositionList::kClientColumn);
  if (!settings.ByClient && !GetFilterText(kClient).empty()) SetFilterText(kClient, {});
  Positions.Use(settings);
  SetColumnVisible(kClient, settings.ByClient);
  ShowChanges();
  TellRowsChanged();
}

void PositionsGrid::TellRowsChanged() {
  if (RowsChanged) RowsChanged();
}

PositionSums PositionsGrid::ShownSums() const {
  std::vector<std::uint32_t> rows;
  for (std::size_t place = 0; place < Shown().Count(); ++place)
    if (const auto row = Shown().RowAt(place)) rows.push_back(static_cast<std::uint32_t>(*row));
  return Positions.Sum(rows);
}

std::span<const CQORPMenuItem> PositionsGrid::ContextMenu() const {
  static constexpr auto kMenu = [] {
    constexpr CQORPMenuItem kOwn[] = {
        {CQORPMenuItem::Kind::Separator, 0},
        {CQORPMenuItem::Kind::Command, 0, kByClient, L"By C&lient"},
        {CQORPMenuItem::Kind::Command, 0, kMethod, L"First &In, First Out"},
    };
    std::array<CQORPMenuItem, std::size(kListMenu) + std::size(kOwn)> menu{};
    std::ranges::copy(kOwn, std::ranges::copy(kListMenu, menu.begin()).out);
    return menu;
  }();
  return kMenu;
}

void PositionsGrid::RunOwnCommand(int id) {
  PositionSettings settings = Positions.Settings();
  if (id == kByClient) settings.ByClient = !settings.ByClient;
  if (id == kMethod)
    settings.Method = settings.Method == CostMethod::Average ? CostMethod::FirstInFirstOut : CostMethod::Average;
  Use(settings);
}

bool PositionsGrid::PreTranslateMessage(wxKeyEvent& event) {
  for (const auto& [key, command] : {std::pair<int, int>{'K', kByClient}, {'I', kMethod}}) {
    if (event.GetModifiers() != wxMOD_CONTROL || event.GetKeyCode() != key) continue;
    RunOwnCommand(command);
    return true;
  }
  return ListGrid::PreTranslateMessage(event);
}

void PositionsGrid::OnFilterBarChanged(int column, const std::wstring& text) {
  ListGrid::OnFilterBarChanged(column, text);
  TellRowsChanged();
}

void PositionsGrid::OnFilterBarClearAll() {
  ListGrid::OnFilterBarClearAll();
  TellRowsChanged();
}

void PositionsGrid::Dress(ListRow row, std::size_t column, CQORPGridCell& cell) const {
  const Trend trend = TrendOfSign(Positions.SignAt(row, column));
  if (trend != Trend::None) cell.TextColor = TrendColor(trend);
}

namespace {

struct Sum {
  const wchar_t* Name;
  std::wstring (*Text)(const PositionSums& sums);
  int (*Sign)(const PositionSums& sums);
};
int NoSign(const PositionSums&) {
  return 0;
}
constexpr Sum kSums[] = {
    {L"Bought", [](const PositionSums& sums) { return CountText(sums.Bought); }, NoSign},
    {L"Sold", [](const PositionSums& sums) { return CountText(sums.Sold); }, NoSign},
    {L"Net", [](const PositionSums& sums) { return QuantityText(sums.Net()); },
     [](const PositionSums& sums) { return SignOf(static_cast<double>(sums.Net())); }},
    {L"Realised", [](const PositionSums& sums) { return ProfitText(sums.Realised); },
     [](const PositionSums& sums) { return SignOf(sums.Realised); }},
    {L"Open", [](const PositionSums& sums) { return ProfitText(sums.Open); },
     [](const PositionSums& sums) { return SignOf(sums.Open); }},
    {L"Total", [](const PositionSums& sums) { return ProfitText(sums.Total()); },
     [](const PositionSums& sums) { return SignOf(sums.Total()); }},
};
constexpr int kSumGapPx = 6;

}  // namespace

bool PositionSumsLine::Create(wxWindow* parent) {
  if (!wxPanel::Create(parent)) return false;
  auto& sizer = MakeChild<wxBoxSizer>(wxHORIZONTAL);
  const wxSizerFlags flags = wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(kSumGapPx) / 2);
  for (const Sum& sum : kSums) {
    sizer.Add(&MakeChild<wxStaticText>(this, wxID_ANY, sum.Name), flags);
    Values.push_back(&MakeChild<wxStaticText>(this, wxID_ANY, wxString()));
    sizer.Add(Values.back(), flags);
    sizer.AddSpacer(FromDIP(kSumGapPx) * 2);
  }
  SetSizer(&sizer);
  SetAutoLayout(false);
  Bind(wxEVT_SIZE, [this](wxSizeEvent&) { Arrange(); });
  return true;
}

// A sizer that lacks room would put the last texts over one another: they are cut off instead.
void PositionSumsLine::Arrange() {
  wxSize size = GetClientSize();
  size.IncTo(GetSizer()->GetMinSize());
  GetSizer()->SetDimension(wxPoint(), size);
}

void PositionSumsLine::Show(const PositionSums& sums) {
  bool changed = false;
  for (std::size_t at = 0; at < Values.size(); ++at) {
    const std::wstring text = kSums[at].Text(sums);
    if (Values[at]->GetLabel() == text) continue;
    const Trend trend = TrendOfSign(kSums[at].Sign(sums));
    Values[at]->SetForegroundColour(trend == Trend::None ? wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT)
                                                         : wxColour(TrendColor(trend)));
    Values[at]->SetLabel(text);
    changed = true;
  }
  if (!changed) return;
  Arrange();
  const std::wstring all = Text();
  for (wxWindow* part : GetChildren()) part->SetToolTip(all);
  SetToolTip(all);
}

std::wstring PositionSumsLine::Text() const {
  std::wstring text;
  for (std::size_t at = 0; at < Values.size(); ++at)
    text += std::wstring(kSums[at].Name) + L" " + Values[at]->GetLabel().ToStdWstring() + L" ";
  return text;
}

bool PositionsBar::Create(CQORPDockingManager& manager, std::uint32_t id, PositionList& rows,
                          std::function<void()> opened) {
  const wxRect floating(manager.Frame().GetPosition() + FromDIP(wxPoint(100, 140)), FromDIP(wxSize(1080, 360)));
  if (!CreateBar(manager, L"Positions", floating, id)) return false;
  Positions = &rows;
  Shown = &MakeChild<PositionsGrid>(*Positions);
  Line = &MakeChild<PositionSumsLine>();
  if (!Shown->Create(this, wxID_ANY) || !Line->Create(this)) return false;
  Shown->Opened = std::move(opened);
  Shown->RowsChanged = [this] { ShowSums(); };
  HoldList(Shown);
  GetSizer()->Add(Line, wxSizerFlags().Expand());
  return true;
}

void PositionsBar::Save(WindowMemory& memory) {
  ListBar::Save(memory);
  memory.SavePositions(Positions->Settings());
}

void PositionsBar::Restore(WindowMemory& memory) {
  Shown->Use(memory.LoadPositions());
  ListBar::Restore(memory);
}

void PositionsBar::ShowChanges() {
  ListBar::ShowChanges();
  if (IsBarShown() && SummedVersion != Positions->Version()) ShowSums();
}

void PositionsBar::ShowSums() {
  SummedVersion = Positions->Version();
  Line->Show(Shown->ShownSums());
}

void PositionsBar::PlaceFirst() {
  TabControlBar();
}
