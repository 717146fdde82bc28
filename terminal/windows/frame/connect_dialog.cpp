#include "terminal/windows/frame/connect_dialog.h"

#include <wx/filedlg.h>
#include <wx/sizer.h>

#include <exception>
#include <utility>

#include "foundations/paths.h"
#include "terminal/windows/frame/window_tools.h"
#include "toolkit/dialogs/controls.h"
#include "toolkit/system/make_child.h"

namespace {

// In dialog units.
constexpr int kWidth = 300;
constexpr int kHeight = 110;

constexpr int kMarginPx = 10;
constexpr int kGapPx = 6;
constexpr int kConnect = wxID_OK;
constexpr int kBrowse = 27101;

constexpr const wchar_t* kAddressHint =
    L"nats://HOST/trades.YYYYMMDD or tls://HOST/trades.YYYYMMDD for a day log, fix:FILE for a FIX session";

}  // namespace

ConnectDialog::ConnectDialog(std::vector<DaySpec> feeds, Connect connect)
    : Feeds(std::move(feeds)), Open(std::move(connect)) {}

bool ConnectDialog::CreateOver(wxWindow* parent) {
  if (!CreateModal(parent, L"Connect", kWidth, kHeight, {})) return false;
  wxSizer& all = MakeChild<wxBoxSizer>(wxVERTICAL);
  all.Add(MakeFields(), wxSizerFlags(1).Expand().Border(wxALL, kMarginPx));
  all.Add(MakeButtons(), wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, kMarginPx));
  SetSizer(&all);
  FitWindow();
  return true;
}

// In tab order.
wxSizer* ConnectDialog::MakeFields() {
  wxSizer& column = MakeChild<wxBoxSizer>(wxVERTICAL);
  column.Add(&MakeChild<wxStaticText>(this, wxID_ANY, L"&Address"));
  Address = &MakeChild<wxComboBox>(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, 0, nullptr,
                                   wxTE_PROCESS_ENTER);
  Address->SetMinSize(ConvertDialogToPixels(wxSize(kWidth, -1)));
  column.Add(Address, wxSizerFlags().Expand());
  column.Add(&MakeChild<wxStaticText>(this, wxID_ANY, kAddressHint), wxSizerFlags().Border(wxTOP | wxBOTTOM, kGapPx));
  column.Add(&MakeChild<wxStaticText>(this, wxID_ANY, L"A&ccess file of a log (may be empty)"));
  column.Add(MakeAccess(), wxSizerFlags().Expand());
  Fault = &MakeChild<wxStaticText>(this, wxID_ANY, wxString());
  column.Add(Fault, wxSizerFlags(1).Expand().Border(wxTOP, kGapPx));
  Address->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent& event) { ShowAccess(event.GetSelection()); });
  for (wxWindow* field : {static_cast<wxWindow*>(Address), static_cast<wxWindow*>(Access)})
    field->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { OnOK(); });
  return &column;
}

wxSizer* ConnectDialog::MakeAccess() {
  wxSizer& row = MakeChild<wxBoxSizer>(wxHORIZONTAL);
  Access = &MakeChild<wxTextCtrl>(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
  row.Add(Access, wxSizerFlags(1).Centre());
  row.Add(&MakeChild<CQORPButton>(this, kBrowse, L"&Browse...", [this] { Browse(); }),
          wxSizerFlags().Border(wxLEFT, kGapPx));
  return &row;
}

wxSizer* ConnectDialog::MakeButtons() {
  wxSizer& row = MakeChild<wxBoxSizer>(wxHORIZONTAL);
  ConnectButton = &MakeChild<CQORPButton>(this, kConnect, L"C&onnect", [this] { OnOK(); });
  row.Add(ConnectButton);
  row.Add(&MakeChild<CQORPButton>(this, wxID_CANCEL, L"Cancel", [this] { OnCancel(); }),
          wxSizerFlags().Border(wxLEFT, kGapPx));
  return &row;
}

void ConnectDialog::OnInitDialog() {
  CQORPDialog::OnInitDialog();
  for (const DaySpec& feed : Feeds) Address->Append(WideOfPath(feed.Given()));
  if (!Feeds.empty()) Address->SetSelection(0);
  ShowAccess(0);
  ConnectButton->SetDefault();
  Address->SetFocus();
}

void ConnectDialog::ShowAccess(int place) {
  const auto at = static_cast<std::size_t>(place);
  Access->ChangeValue(place >= 0 && at < Feeds.size() ? WideOfPath(Feeds[at].Access) : std::wstring());
}

void ConnectDialog::Browse() {
  wxFileDialog dialog(this, L"Access File", wxString(), wxString(), L"All files|*", wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  if (dialog.ShowModal() == wxID_OK) Access->ChangeValue(dialog.GetPath());
}

void ConnectDialog::OnOK() {
  const std::wstring address = Address->GetValue().Strip(wxString::both).ToStdWstring();
  const std::wstring access = Access->GetValue().Strip(wxString::both).ToStdWstring();
  const DaySpec feed(PathOfWide(address), PathOfWide(access));
  if (!feed.IsFeed()) return ShowFault(L"An address begins with nats://, tls:// or fix:");
  try {
    Open(feed);
  } catch (const std::exception& failure) {
    return ShowFault(Wide(failure.what()));
  }
  CQORPDialog::OnOK();
}

void ConnectDialog::ShowFault(const std::wstring& text) {
  Fault->SetLabelText(text);
  Fault->Wrap(Fault->GetParent()->GetClientSize().x - 2 * kMarginPx);
  FitWindow();
  Address->SetFocus();
}
