// clipboard_reader text|html FILE: writes the unchanged clipboard data of that format into the file, in UTF-8. Exit
// code 1 if the clipboard has no such format.
#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/file.h>

#include "toolkit/system/make_child.h"

namespace {

int Read(const wxString& kind, const wxString& path) {
  const wxDataFormat format(kind == "html" ? wxDF_HTML : wxDF_UNICODETEXT);
  const wxClipboardLocker locker;
  if (!locker || !wxTheClipboard->IsSupported(format)) return 1;
  wxCustomDataObject data(format);  // wxTextDataObject would give every system's line ends as \n
  if (!wxTheClipboard->GetData(data)) return 1;
  const bool isWide = kind == "text" && sizeof(wchar_t) == 2;  // UTF-16 and a zero
  const wxString bytes = isWide ? wxString(static_cast<const wchar_t*>(data.GetData()))
                                : wxString::FromUTF8(static_cast<const char*>(data.GetData()), data.GetSize());
  return wxFile(path, wxFile::write).Write(bytes, wxConvUTF8) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  wxApp::SetInstance(&MakeChild<wxApp>());
  if (!wxEntryStart(argc, argv) || argc != 3) return 2;
  const int outcome = Read(argv[1], argv[2]);
  wxEntryCleanup();
  return outcome;
}
