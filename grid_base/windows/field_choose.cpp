// CFieldChoose: the dialog of "Field Choose", with a list of visible and one of hidden columns, and buttons that move a
// column. The grid changes at once.
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <optional>

#include "grid_base/settings/grid_types.h"
#include "grid_base/windows/base_grid.h"
#include "grid_base/windows/field_order.h"
#include "toolkit/dialogs/controls.h"
#include "toolkit/dialogs/dialog.h"
#include "toolkit/system/make_child.h"

namespace {

constexpr int kSave = 27011;
constexpr int kUp = 27012;
constexpr int kDown = 27013;
constexpr int kShownList = 27014;
constexpr int kHiddenList = 27015;
constexpr int kOk = 27016;
constexpr int kCancel = 2;

// In dialog units.
constexpr int kWidth = 270;
constexpr int kHeight = 190;
constexpr int kListWidth = 100;
constexpr int kListHeight = 140;

constexpr int kMarginPx = 10;
constexpr int kGapPx = 6;

class CFieldChoose : public CQORPDialog {
 public:
  explicit CFieldChoose(CVELDSGridCtrl& grid) : Grid(grid) {}
  // Makes the window for DoModal over the grid; false if it could not be made.
  bool CreateOverGrid();

  // Restores the order of the columns.
  void OnCancel() override;

 protected:
  void OnInitDialog() override;

 private:
  void MakeControls();
  wxSizer* MakeLists();
  wxSizer* MakeList(int id, const wchar_t* label, CQORPCheckListBox*& list);
  wxSizer* MakeMoveButtons();
  wxSizer* MakeEndButtons();
  void OnKey(wxKeyEvent& event);
  void Do(bool (FieldOrder::*command)());

  CVELDSGridCtrl& Grid;
  std::optional<FieldOrder> Order;
  // Child windows.
  CQORPCheckListBox* ShownList = nullptr;
  CQORPCheckListBox* HiddenList = nullptr;
  CQORPButton* OkButton = nullptr;
};

}  // namespace

bool CFieldChoose::CreateOverGrid() {
  const std::wstring title = std::wstring(GridTypeName(Grid.GetGridType())) + L" - " + L"FieldChoose";
  if (!CreateModal(&Grid, title, kWidth, kHeight, {})) return false;
  MakeControls();
  return true;
}

// In tab order.
void CFieldChoose::MakeControls() {
  wxSizer& all = MakeChild<wxBoxSizer>(wxVERTICAL);
  all.Add(MakeLists(), wxSizerFlags(1).Expand().Border(wxALL, kMarginPx));
  all.Add(MakeEndButtons(), wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, kMarginPx));
  SetSizer(&all);
  FitWindow();
  ShownList->OnCheckChange = [this] { Do(&FieldOrder::Hide); };
  HiddenList->OnCheckChange = [this] { Do(&FieldOrder::Show); };
  Bind(wxEVT_CHAR_HOOK, &CFieldChoose::OnKey, this);
}

wxSizer* CFieldChoose::MakeLists() {
  wxSizer& row = MakeChild<wxBoxSizer>(wxHORIZONTAL);
  row.Add(MakeList(kShownList, L"Sho&wn columns", ShownList), wxSizerFlags(1).Expand());
  row.Add(MakeMoveButtons(), wxSizerFlags().Centre().Border(wxLEFT | wxRIGHT, kGapPx));
  row.Add(MakeList(kHiddenList, L"&Hidden columns", HiddenList), wxSizerFlags(1).Expand());
  return &row;
}

wxSizer* CFieldChoose::MakeList(int id, const wchar_t* label, CQORPCheckListBox*& list) {
  wxSizer& column = MakeChild<wxBoxSizer>(wxVERTICAL);
  column.Add(&MakeChild<wxStaticText>(this, wxID_ANY, label), wxSizerFlags().Border(wxBOTTOM, kGapPx));
  list = &MakeChild<CQORPCheckListBox>(this, id, wxControl::RemoveMnemonics(label).ToStdWstring());
  list->SetMinSize(ConvertDialogToPixels(wxSize(kListWidth, kListHeight)));
  column.Add(list, wxSizerFlags(1).Expand());
  return &column;
}

wxSizer* CFieldChoose::MakeMoveButtons() {
  wxSizer& column = MakeChild<wxBoxSizer>(wxVERTICAL);
  column.Add(&MakeChild<CQORPButton>(this, kUp, L"&Up", [this] { Do(&FieldOrder::MoveUp); }),
             wxSizerFlags().Border(wxBOTTOM, kGapPx));
  column.Add(&MakeChild<CQORPButton>(this, kDown, L"&Down", [this] { Do(&FieldOrder::MoveDown); }));
  return &column;
}

wxSizer* CFieldChoose::MakeEndButtons() {
  const auto save = [this] {
    Grid.SaveColumnProfile();
    OnOK();
  };
  wxSizer& row = MakeChild<wxBoxSizer>(wxHORIZONTAL);
  row.Add(&MakeChild<CQORPButton>(this, kSave, L"&Save", save));
  OkButton = &MakeChild<CQORPButton>(this, kOk, L"OK", [this] { OnOK(); });
  row.Add(OkButton, wxSizerFlags().Border(wxLEFT, kGapPx));
  row.Add(&MakeChild<CQORPButton>(this, kCancel, L"Cancel", [this] { OnCancel(); }),
          wxSizerFlags().Border(wxLEFT, kGapPx));
  return &row;
}

void CFieldChoose::OnInitDialog() {
  CQORPDialog::OnInitDialog();
  Order.emplace(Grid.GetColumnsInfo(), Grid.GetColumnTable(), *ShownList, *HiddenList);
  Order->Fill();
  OkButton->SetDefault();
  ShownList->SetFocus();
}

void CFieldChoose::OnCancel() {
  Do(&FieldOrder::Restore);
  CQORPDialog::OnCancel();
}

void CFieldChoose::Do(bool (FieldOrder::*command)()) {
  if (Order && ((*Order).*command)()) Grid.AdjustLayout();
}

// On some systems a list consumes Enter, and the mnemonic of a label does not focus its list.
void CFieldChoose::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool isEnter = key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
  const bool isAlt = event.GetModifiers() == wxMOD_ALT;
  if (isEnter && dynamic_cast<wxButton*>(FindFocus()) == nullptr) {
    OnOK();
  } else if (isAlt && key == 'W') {
    ShownList->SetFocus();
  } else if (isAlt && key == 'H') {
    HiddenList->SetFocus();
  } else {
    event.Skip();
  }
}

void CVELDSGridCtrl::ChooseFields() {
  const FocusReturn focus(*this);
  CFieldChoose dialog(*this);
  if (dialog.CreateOverGrid()) dialog.DoModal();
}
