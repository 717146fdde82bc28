#include "toolkit/grid/grid_ctrl_impl.h"

#include <wx/clipbrd.h>
#include <wx/log.h>
#include <wx/textfile.h>

#include <algorithm>
#include <memory>

#include "toolkit/grid/grid_state.h"
#include "toolkit/model/copy_text.h"
#include "toolkit/system/make_child.h"
#include "toolkit/system/native_windows.h"

namespace {
constexpr int kLeastSidePx = 80;
constexpr int kMenuInsetPx = 8;
}  // namespace

void CQORPGridCtrl::Impl::MakeView() {
  GridView::Listener listener;
  listener.WindowsMade = [this](wxWindow& rows, wxWindow& header) {
    SetAccessibleName(rows, Name);
    Speaker.Attach(rows);  // its handler of the focus runs after that of the rows
    Rows.Attach(rows);
    Header.Attach(header);
  };
  listener.FrozenWindowsGo = [this] {
    Rows.StopDragging();
    Header.StopDragging();
    Filters.LeaveFrozenWindow();
  };
  listener.ColumnsMoved = [this] { Filters.Follow(); };
  View = &MakeChild<GridView>(Owner, State, std::move(listener));
  Rows.SetView(*View);
  Header.SetView(*View);
  Filters.SetView(*View);
  Find.SetView(*View, [this] { FillOwner(); });
  Rows.Attach(*View->GetGridRowLabelWindow());
  View->GetGridCornerLabelWindow()->Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) { Owner.SelectAll(); });
  FillOwner();
  Owner.Bind(wxEVT_SIZE, [this](wxSizeEvent&) { FillOwner(); });
  Owner.Bind(wxEVT_CONTEXT_MENU, &Impl::OnContextMenu, this);
  Owner.Bind(wxEVT_CHAR_HOOK, &Impl::OnKey, this);
  Owner.Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
    event.Skip();
    View->ThemeChanged();
  });
  Owner.Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& event) {
    event.Skip();
    ScaleColumns(event.GetOldDPI().x, event.GetNewDPI().x);
  });
}

void CQORPGridCtrl::Impl::NameForReaders(const std::wstring& name) {
  Name = name;
  for (wxWindow* rows : {View->GetGridWindow(), View->GetFrozenColGridWindow()})
    if (rows != nullptr) SetAccessibleName(*rows, Name);
}

// The window has moved to a screen with another scale.
void CQORPGridCtrl::Impl::ScaleColumns(int fromDpi, int toDpi) {
  if (fromDpi <= 0) return;
  for (int column = 0; column < Owner.GetColumnCount(); ++column)
    State.Columns.SetColumnWidth(column, State.Columns.GetColumnWidth(column) * toDpi / fromDpi);
  Owner.AdjustLayout();
}

// wxGTK 3.2: scroll bars shorter than their buttons cause an endless layout loop. A smaller grid is clipped. Drop when
// 3.4 is the floor.
void CQORPGridCtrl::Impl::FillOwner() {
  wxSize size = Owner.GetClientSize();
  const int barPx = Find.HeightPx();
  Find.Place({0, size.y - barPx, size.x, barPx});
  size.y -= barPx;
  size.IncTo(Owner.FromDIP(wxSize(kLeastSidePx, kLeastSidePx)));
  View->SetSize(size);
}

// The menu key has no position: the menu opens below the current row.
wxPoint CQORPGridCtrl::Impl::MenuPoint() const {
  const wxWindow& rows = *View->GetGridWindow();
  const int below = (State.Selection.GetCurrent() - View->GetFirstRow() + 1) * View->GetDefaultRowSize();
  return rows.ClientToScreen(
      {Owner.FromDIP(kMenuInsetPx), std::clamp(below, 0, std::max(rows.GetClientSize().y - 1, 0))});
}

// Keys that a filter field or the find bar skips are for the program, so PreTranslateMessage does not get them.
void CQORPGridCtrl::Impl::OnKey(wxKeyEvent& event) {
  wxObject* window = event.GetEventObject();
  const bool inField = Filters.IsEdit(window);
  const bool isHandled = !Find.IsInBar(window) && ((!inField && Owner.PreTranslateMessage(event)) || Find.OnKey(event));
  event.Skip(!isHandled);
}

// Commands and the terminal use the focused window, which has to be this grid.
void CQORPGridCtrl::Impl::OnContextMenu(wxContextMenuEvent& event) {
  if (!Owner.IsDescendant(wxWindow::FindFocus())) View->SetFocus();
  Owner.OnShowContextMenu(event.GetPosition() == wxDefaultPosition ? MenuPoint() : event.GetPosition());
}

namespace {

// The scratch cell holds the last text.
RowsToCopy RowsOf(const GridState& state, CQORPGridCell& scratch) {
  return {state.Columns, state.Selection, [&state, &scratch](int row, int column) -> std::wstring_view {
            scratch.Text.clear();
            return state.Display(row, column, scratch) ? scratch.Text : std::wstring_view();
          }};
}

bool HasRows(const GridState& state) {
  return state.Display && state.Selection.GetRows() > 0;
}

// The return value reports a clipboard that another program holds; the log of wxWidgets is not needed.
bool PutOntoClipboard(std::unique_ptr<wxDataObject> data) {
  const wxLogNull noMessages;
  const wxClipboardLocker locker;
  if (!locker || !wxTheClipboard->SetData(data.release())) return false;
  KeepClipboardAfterEnd();
  return true;
}

}  // namespace

bool CopyRows(const GridState& state) {
  if (!HasRows(state)) return false;
  CQORPGridCell scratch;
  const CopiedRows copied = CopyAsTextAndHtml(RowsOf(state, scratch), wxString(wxTextFile::GetEOL()).ToStdWstring());
  auto data = std::make_unique<wxDataObjectComposite>();
  data->Add(&MakeChild<wxTextDataObject>(copied.Text), true);
  data->Add(HtmlForClipboard(copied.Html).release());
  return PutOntoClipboard(std::move(data));
}

bool CopyRowsAsHtml(const GridState& state) {
  if (!HasRows(state)) return false;
  CQORPGridCell scratch;
  return PutOntoClipboard(HtmlForClipboard(CopyAsHtml(RowsOf(state, scratch))));
}
