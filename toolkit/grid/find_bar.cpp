#include "toolkit/grid/find_bar.h"

#include <wx/sizer.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "foundations/text_tools.h"
#include "toolkit/dialogs/controls.h"
#include "toolkit/grid/edit_field.h"
#include "toolkit/system/make_child.h"
#include "toolkit/system/native_windows.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int kFindFieldPx = 170, kBarGapPx = 4;
constexpr ColorRef kWarning = 0x2020C0;
constexpr milliseconds kSlice{12};
constexpr milliseconds kQuiet{150};  // a search that takes longer tells how far it is
constexpr int kBetweenSlicesMs = 1;

bool IsEnter(int keyCode) {
  return keyCode == WXK_RETURN || keyCode == WXK_NUMPAD_ENTER;
}
bool IsDown(int keyCode) {
  return keyCode == WXK_DOWN || keyCode == WXK_NUMPAD_DOWN;
}

}  // namespace

GridFindBar::GridFindBar(wxWindow& grid, Listener listener)
    : wxPanel(&grid, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxBORDER_NONE, L"Find"),
      Told(std::move(listener)) {
  auto& line = MakeChild<wxBoxSizer>(wxHORIZONTAL);
  const wxSizerFlags middle = wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(kBarGapPx) / 2);
  SetSizer(&line);
  Field = &MakeChild<wxTextCtrl>(this, wxID_ANY, wxString(), wxDefaultPosition, wxSize(FromDIP(kFindFieldPx), -1),
                                 wxTE_PROCESS_ENTER);
  Field->SetHint(L"Find");
  SetAccessibleName(*Field, L"Find");
  line.Add(Field, middle);
  AddButton(L"\x2193", L"Next (Enter, F3)", [this] { Told.FindNext(true); });
  AddButton(L"\x2191", L"Previous (Shift+Enter, Shift+F3)", [this] { Told.FindNext(false); });
  Message = &MakeChild<CQORPStatic>(this, wxID_ANY, std::wstring(), wxRect());
  line.Add(Message, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(kBarGapPx) / 2));
  AddButton(L"\xD7", L"Close (Escape)", [this] { Told.Close(); });
  Field->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { Told.TextChanged(); });
  Field->Bind(wxEVT_CONTEXT_MENU, [](wxContextMenuEvent& event) { KeepInField(event); });
  Bind(wxEVT_CHAR_HOOK, &GridFindBar::OnKey, this);
}

// Books are narrow: the buttons leave room for the message.
void GridFindBar::AddButton(const std::wstring& caption, const std::wstring& name, std::function<void()> press) {
  auto& button = MakeChild<CQORPButton>(this, wxID_ANY, caption, std::move(press));
  button.SetWindowStyleFlag(button.GetWindowStyleFlag() | wxBU_EXACTFIT);
  button.InvalidateBestSize();
  button.SetToolTip(name);
  SetAccessibleDescription(button, name);
  GetSizer()->Add(&button, wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(kBarGapPx) / 2));
}

void GridFindBar::EditText() {
  Field->SetFocus();
  Field->SelectAll();
}

void GridFindBar::ShowMessage(const std::wstring& text, bool isWarning) {
  Message->SetTextColor(isWarning ? std::optional(kWarning) : std::nullopt);
  Message->SetWindowText(text);
}

const std::wstring& GridFindBar::GetMessage() const {
  return Message->GetWindowText();
}

// Keys of the bar do not reach the rows, which have other uses for them.
void GridFindBar::OnKey(wxKeyEvent& event) {
  if (FindByKey(event)) return;
  if (!IsForProgram(event) && IsForField(event))
    KeepInField(event);
  else
    event.Skip();
}

bool GridFindBar::FindByKey(const wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool inField = wxWindow::FindFocus() == Field;
  if (event.ControlDown() || event.AltDown()) return false;
  if (key == WXK_ESCAPE) {
    Told.Close();
  } else if (key == WXK_F3 || (IsEnter(key) && inField)) {
    Told.FindNext(!event.ShiftDown());
  } else if (IsDown(key) && inField) {
    Told.LeaveToRows();
  } else {
    return false;
  }
  return true;
}

GridFind::GridFind(CQORPGridCtrl& owner, GridState& state, GridRowsInput& rows)
    : Owner(owner), State(state), Rows(rows) {
  NextSlice.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Slice(); });
}

void GridFind::SetView(GridView& view, std::function<void()> layout) {
  View = &view;
  Layout = std::move(layout);
}

void GridFind::MakeBar() {
  Bar = &MakeChild<GridFindBar>(Owner, GridFindBar::Listener{.TextChanged = [this] { OnText(); },
                                                             .FindNext = [this](bool down) { FindNext(down); },
                                                             .LeaveToRows = [this] { View->SetFocus(); },
                                                             .Close = [this] { Close(); }});
}

GridFindBar* GridFind::GetBar() const {
  return Bar != nullptr && Bar->IsShown() ? Bar : nullptr;
}

void GridFind::Open() {
  if (View == nullptr) return;
  if (Bar == nullptr) MakeBar();
  if (!Bar->IsShown()) Bar->Show();
  Layout();
  Bar->EditText();
  State.Find.Shown = true;
  View->RepaintRows();
}

// The text stays for the next time.
void GridFind::Close() {
  if (GetBar() == nullptr) return;
  const bool hadFocus = Bar->IsDescendant(wxWindow::FindFocus());
  Search.Stop();
  NextSlice.Stop();
  Bar->ShowMessage({});
  if (hadFocus) View->SetFocus();
  Bar->Hide();
  Layout();
  State.Find.Shown = false;
  View->RepaintRows();
}

bool GridFind::OnKey(const wxKeyEvent& event) {
  if (event.ControlDown() || event.AltDown()) return false;
  if (event.GetKeyCode() == WXK_TAB && !event.ShiftDown() && GetBar() != nullptr) {
    Bar->EditText();
    return true;
  }
  if (event.GetKeyCode() != WXK_F3) return false;
  const bool hasText = Bar != nullptr && !Bar->GetField().IsEmpty();
  if (!hasText || GetBar() == nullptr) Open();
  if (hasText) FindNext(!event.ShiftDown());
  return true;
}

bool GridFind::IsInBar(wxObject* window) const {
  auto* inside = dynamic_cast<wxWindow*>(window);
  return Bar != nullptr && inside != nullptr && Bar->IsDescendant(inside);
}

int GridFind::HeightPx() const {
  return GetBar() == nullptr ? 0 : Bar->GetBestSize().y;
}

void GridFind::Place(const wxRect& rect) {
  if (GetBar() != nullptr) Bar->SetSize(rect);
}

void GridFind::OnText() {
  State.Find.Wanted = LowerWide(Bar->GetField().GetValue().ToStdWstring());
  Begin(true, false);
}

void GridFind::FindNext(bool downwards) {
  const bool goesOn = Search.State() == GridSearchState::Searching && Downwards == downwards;
  if (!goesOn) Begin(downwards, true);
}

void GridFind::Begin(bool downwards, bool behind) {
  Downwards = downwards;
  Behind = behind;
  Begun = steady_clock::now();
  Bar->ShowMessage({});
  Owner.FollowNewRows();
  Restart();
}

// Without a found cell in the current row, that row is searched whole.
void GridFind::Restart() {
  Search.Stop();
  if (State.Find.Wanted.empty()) return Unmark();
  const int current = State.Selection.GetCurrent();
  const bool isAtFound = current >= 0 && State.Find.Cell.Row == current;
  const GridCellPlace from = isAtFound ? State.Find.Cell : GridCellPlace{current, -1};
  std::vector<int> columns = State.Columns.DisplayColumns();
  auto finder = Owner.MakeFinder(State.Find.Wanted, columns);
  Search.Begin(std::move(finder), std::move(columns), State.Selection.GetRows(),
               {.Cell = from, .Behind = Behind, .Downwards = Downwards});
  Slice();
}

void GridFind::Slice() {
  Owner.FollowNewRows();
  const auto end = steady_clock::now() + kSlice;
  switch (Search.Advance([end] { return steady_clock::now() >= end; })) {
    case GridSearchState::Idle:
      return;
    case GridSearchState::Searching:
      ShowProgress();
      NextSlice.StartOnce(kBetweenSlicesMs);
      return;
    case GridSearchState::Found:
      return ShowFound();
    case GridSearchState::NotFound:
      Unmark();
      return Bar->ShowMessage(L"Not found", true);
  }
}

void GridFind::ShowProgress() {
  if (steady_clock::now() - Begun < kQuiet) return;
  Bar->ShowMessage(L"Searching: " + std::to_wstring(Search.Percent()) + L" %");
}

void GridFind::ShowFound() {
  State.Find.Cell = Search.Found();
  State.CurrentColumn = State.Find.Cell.Column;
  Rows.ChangeSelection([this](RowSelection& selection) { selection.SelectOnly(State.Find.Cell.Row); });
  View->ShowColumn(State.CurrentColumn);
  View->RepaintHeader();
  View->RepaintRows();
  Bar->ShowMessage(FoundText());
}

std::wstring GridFind::FoundText() const {
  const std::wstring place =
      State.Columns.GetColumnName(State.Find.Cell.Column) + L", row " + GroupedDigits(State.Find.Cell.Row + 1);
  if (!Search.HasWrapped()) return place;
  return (Downwards ? L"Continued at the top: " : L"Continued at the bottom: ") + place;
}

void GridFind::Unmark() {
  NextSlice.Stop();
  State.Find.Cell = {};
  View->RepaintRows();
}

void GridFind::InsertRows(int before, int rows) {
  Search.InsertRows(before, rows);
  if (State.Find.Cell.Row >= before) State.Find.Cell.Row += rows;
}

void GridFind::SetRows(int rows) {
  Search.SetRows(rows);
  if (State.Find.Cell.Row >= rows) State.Find.Cell = {};
}

void GridFind::RowsReplaced() {
  State.Find.Cell = {};
  if (Search.State() == GridSearchState::Searching) Restart();
}

void GridFind::ColumnsChanged() {
  if (Search.State() == GridSearchState::Searching && Search.SearchedColumns() != State.Columns.DisplayColumns())
    Restart();
}
