#include "toolkit/dialogs/dialog.h"

#include <wx/display.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>
#include <system_error>

#include "foundations/paths.h"
#include "toolkit/dialogs/message_box.h"
#include "toolkit/system/make_child.h"

namespace {

constexpr int kCaptionPx = 30;  // the window's rectangle may exclude the caption

int Share(int change, int percent) {
  return change * percent / 100;
}

// A window centred on a parent at the edge of the screen may be partly outside.
void MoveOntoScreen(wxWindow& window) {
  const int display = wxDisplay::GetFromWindow(window.GetParent() == nullptr ? &window : window.GetParent());
  const wxRect screen = wxDisplay(display == wxNOT_FOUND ? 0U : static_cast<unsigned>(display)).GetClientArea();
  const int room = window.FromDIP(kCaptionPx);
  const wxRect place = window.GetRect();
  window.Move(std::max(screen.x, std::min(place.x, screen.GetRight() - place.width)),
              std::max(screen.y + room, std::min(place.y, screen.GetBottom() - place.height)));
}

}  // namespace

CQORPDialog::~CQORPDialog() {
  if (Window != nullptr) Window->Destroy();
}

bool CQORPDialog::CreateChild(wxWindow* parent, int id, int widthUnits, int heightUnits,
                              std::span<const DialogControl> controls) {
  return CreateIn(parent, id, {widthUnits, heightUnits}, controls);
}

bool CQORPDialog::CreateModal(wxWindow* parent, const std::wstring& caption, int widthUnits, int heightUnits,
                              std::span<const DialogControl> controls) {
  constexpr long kStyle = wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER;
  Window = &MakeChild<wxDialog>(parent, wxID_ANY, caption, wxDefaultPosition, wxDefaultSize, kStyle);
  if (!CreateIn(Window, wxID_ANY, {widthUnits, heightUnits}, controls)) return false;
  Window->SetClientSize(GetSize());
  Window->SetMinSize(Window->GetSize());
  Window->Bind(wxEVT_SIZE, &CQORPDialog::OnWindowSize, this);
  Window->Bind(wxEVT_CLOSE_WINDOW, &CQORPDialog::OnWindowClose, this);
  Window->Bind(wxEVT_CHAR_HOOK, &CQORPDialog::OnWindowKey, this);
  return true;
}

void CQORPDialog::FitWindow() {
  if (Window == nullptr || GetSizer() == nullptr) return;
  Window->SetMinSize(wxDefaultSize);
  Window->SetClientSize(GetSizer()->GetMinSize());
  Window->SetMinSize(Window->GetSize());
  SetSize(Window->GetClientSize());
}

void CQORPDialog::OnWindowSize(wxSizeEvent& event) {
  event.Skip();
  SetSize(Window->GetClientSize());
}

void CQORPDialog::OnWindowClose(wxCloseEvent& event) {
  if (!Window->IsModal()) return event.Skip();
  OnCancel();
}

void CQORPDialog::OnWindowKey(wxKeyEvent& event) {
  if (event.GetKeyCode() != WXK_ESCAPE || !Window->IsModal()) return event.Skip();
  OnCancel();
}

bool CQORPDialog::CreateIn(wxWindow* parent, int id, const wxSize& units, std::span<const DialogControl> controls) {
  if (!wxPanel::Create(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxCLIP_CHILDREN)) return false;
  SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
  SetSize(ConvertDialogToPixels(units));
  for (const DialogControl& control : controls) {
    const wxRect place = FromDialogUnits({control.X, control.Y, control.Width, control.Height});
    Statics.push_back(&MakeChild<CQORPStatic>(this, control.Id, control.Text, place));
  }
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    AdjustControlsLayout();
  });
  return true;
}

int CQORPDialog::DoModal() {
  if (Window == nullptr) return wxID_CANCEL;
  OnInitDialog();
  Window->CentreOnParent();
  MoveOntoScreen(*Window);
  return Window->ShowModal();
}

void CQORPDialog::EndDialog(int result) {
  if (Window != nullptr && Window->IsModal()) Window->EndModal(result);
}

CQORPStatic* CQORPDialog::GetStatic(int id) const {
  const auto found =
      std::find_if(Statics.begin(), Statics.end(), [id](CQORPStatic* one) { return one->GetId() == id; });
  return found == Statics.end() ? nullptr : *found;
}

wxRect CQORPDialog::FromDialogUnits(const wxRect& units) const {
  return {ConvertDialogToPixels(units.GetPosition()), ConvertDialogToPixels(units.GetSize())};
}

bool CQORPDialog::SetFont(const wxFont& font) {
  for (CQORPStatic* text : Statics) text->SetFont(font);
  return wxPanel::SetFont(font);
}

void CQORPDialog::AddAnchor(wxWindow* control, const Anchor& anchor) {
  Anchors.push_back({control, anchor, control->GetRect(), GetClientSize()});
}

void CQORPDialog::AdjustControlsLayout() {
  const wxSize size = GetClientSize();
  for (const Anchored& anchored : Anchors) {
    const wxSize change = size - anchored.DialogSize;
    const wxRect& place = anchored.Place;
    const Anchor& how = anchored.How;
    anchored.Control->SetSize(place.x + Share(change.x, how.MoveXPercent), place.y + Share(change.y, how.MoveYPercent),
                              std::max(0, place.width + Share(change.x, how.SizeXPercent)),
                              std::max(0, place.height + Share(change.y, how.SizeYPercent)), wxSIZE_ALLOW_MINUS_ONE);
  }
}

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

// In upper and lower case, as file names on Linux are case-sensitive. A filter with patterns of its own has them
// already.
wxString Wildcard(const std::wstring& filter, const std::wstring& extension) {
  if (filter.find(L'|') != std::wstring::npos) return filter;
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

// That of the first pattern of the type that the user chose.
std::wstring CQORPFileDialog::ChosenExtension() const {
  wxArrayString texts;
  wxArrayString patterns;
  wxParseCommonDialogsFilter(GetWildcard(), texts, patterns);
  const auto chosen = static_cast<std::size_t>(std::max(GetFilterIndex(), 0));
  return chosen < patterns.size() ? patterns[chosen].BeforeFirst(';').AfterFirst('*').ToStdWstring() : Extension;
}

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
    const fs::path extended = fs::path(path) += ChosenExtension();
    if (MayReplace(extended)) return extended;
  }
  return std::nullopt;
}
