#include "toolkit/system_clipboard.h"

#include <wx/clipbrd.h>

// Goes out in UTF-8 again, under the header that programs look for.
std::unique_ptr<wxDataObjectSimple> HtmlForClipboard(const std::string& html) {
  return std::make_unique<wxHTMLDataObject>(wxString::FromUTF8(html.data(), html.size()));
}

void KeepClipboardAfterEnd() {
  wxTheClipboard->Flush();
}
