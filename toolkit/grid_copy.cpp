#include "toolkit/grid_copy.h"

#include <wx/clipbrd.h>
#include <wx/log.h>
#include <wx/textfile.h>

#include <memory>

#include "toolkit/copy_text.h"
#include "toolkit/grid_state.h"
#include "toolkit/system_clipboard.h"

namespace {

// The scratch cell holds the text that was asked for last.
RowsToCopy RowsOf(const GridState& state, CQORPGridCell& scratch) {
  return {state.Columns, state.Selection, [&state, &scratch](int row, int column) -> std::wstring_view {
            scratch.Text.clear();
            return state.Display(row, column, scratch) ? scratch.Text : std::wstring_view();
          }};
}

bool HasRows(const GridState& state) {
  return state.Display && state.Selection.GetRows() > 0;
}

// What wxWidgets would log about a clipboard that another program holds, the caller knows from the answer.
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
  data->Add(std::make_unique<wxTextDataObject>(copied.Text).release(), true);
  data->Add(HtmlForClipboard(copied.Html).release());
  return PutOntoClipboard(std::move(data));
}

bool CopyRowsAsHtml(const GridState& state) {
  if (!HasRows(state)) return false;
  CQORPGridCell scratch;
  return PutOntoClipboard(HtmlForClipboard(CopyAsHtml(RowsOf(state, scratch))));
}
