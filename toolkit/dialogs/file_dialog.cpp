#include "toolkit/dialogs/file_dialog.h"

#include <system_error>

#include "foundations/paths.h"
#include "toolkit/dialogs/message_box.h"

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t kYesNoWarning = 0x34;
constexpr int kYes = 6;

// Nobody saves to a root folder: it counts as none.
fs::path StartFolder(const fs::path& proposal) {
  std::error_code ignored;
  fs::path folder = proposal.parent_path();
  while (folder.has_relative_path() && !fs::is_directory(folder, ignored)) folder = folder.parent_path();
  return folder.has_relative_path() ? folder : CurrentFolder();
}

// In upper and lower case, as file names on Linux are case-sensitive.
wxString Wildcard(const std::wstring& filter, const std::wstring& extension) {
  const wxString pattern = L"*" + extension;
  return filter + L"|" + pattern.Lower() + L";" + pattern.Upper();
}

}  // namespace

CQORPFileDialog::CQORPFileDialog(wxWindow* parent, const fs::path& proposal, const std::wstring& extension,
                                 const std::wstring& filter)
    : wxFileDialog(parent, L"Save As", wxString(WideOfPath(StartFolder(proposal))),
                   wxString(WideOfPath(proposal.filename())), Wildcard(filter, extension),
                   wxFD_SAVE | wxFD_OVERWRITE_PROMPT),
      Proposed(proposal),
      Extension(extension) {}

// The system asks only about the name that the user typed.
bool CQORPFileDialog::MayReplace(const fs::path& path) {
  std::error_code ignored;
  if (!fs::exists(path, ignored)) return true;
  CQORPMessageBox box;
  box.Parent = GetParent();
  box.Caption = L"Save As";
  box.Text = WideOfPath(path.filename()) + L" already exists.\nDo you want to replace it?";
  box.Style = kYesNoWarning;
  return box.ShowModal() == kYes;
}

std::optional<fs::path> CQORPFileDialog::AskForPath() {
  while (ShowModal() == wxID_OK) {
    if (!Answer.empty()) return Answer;
    const fs::path path = PathOfWide(GetPath().ToStdWstring());
    if (path.has_extension()) return path;
    const fs::path extended = fs::path(path) += Extension;
    if (MayReplace(extended)) return extended;
  }
  return std::nullopt;
}
