// What of the clipboard differs from system to system. Used on the calling thread of the windows only.
#pragma once

#include <wx/dataobj.h>

#include <memory>
#include <string>

// HTML in UTF-8 as the programs of this system expect it on the clipboard.
std::unique_ptr<wxDataObjectSimple> HtmlForClipboard(const std::string& html);

// What was just put onto the clipboard stays there when the program ends.
void KeepClipboardAfterEnd();
