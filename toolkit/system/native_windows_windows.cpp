#include "toolkit/system/native_windows.h"

#include <wx/clipbrd.h>

// The cursor goes with the selection.
void MoveListCursor(wxListBox& /*list*/, int /*item*/) {}

void SetListName(wxListBox& list, const std::wstring& name) {
  SetAccessibleName(list, name);
}

// The system reads it from the window's own text.
void SetAccessibleName(wxWindow& window, const std::wstring& name) {
  window.SetLabel(name);
}

// Goes out in UTF-8 again, under the header that programs look for.
std::unique_ptr<wxDataObjectSimple> HtmlForClipboard(const std::string& html) {
  return std::make_unique<wxHTMLDataObject>(wxString::FromUTF8(html.data(), html.size()));
}

void KeepClipboardAfterEnd() {
  wxTheClipboard->Flush();
}
