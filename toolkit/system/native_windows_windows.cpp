#include "toolkit/system/native_windows.h"

#include <wx/clipbrd.h>

// The cursor follows the selection.
void MoveListCursor(wxListBox& /*list*/, int /*item*/) {}

void SetListName(wxListBox& list, const std::wstring& name) {
  SetAccessibleName(list, name);
}

// Screen readers use the text of the window.
void SetAccessibleName(wxWindow& window, const std::wstring& name) {
  window.SetLabel(name);
}

// wxHTMLDataObject writes UTF-8 with the header of the format.
std::unique_ptr<wxDataObjectSimple> HtmlForClipboard(const std::string& html) {
  return std::make_unique<wxHTMLDataObject>(wxString::FromUTF8(html.data(), html.size()));
}

void KeepClipboardAfterEnd() {
  wxTheClipboard->Flush();
}
