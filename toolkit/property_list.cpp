#include "toolkit/property_list.h"

#include <wx/sizer.h>
#include <wx/stattext.h>

#include "toolkit/accessible_name.h"
#include "toolkit/property_editors.h"

class CQORPPropList::Impl {
 public:
  Impl(CQORPPropList& owner, const std::wstring& name);
  void Add(wxPGProperty& parent, CQORPProp& item);
  void ShowDescription();
  void FitNames();

  CQORPPropList& Owner;
  wxPropertyGrid* Grid;  // child windows
  wxStaticText* Description;
  std::wstring Hint;
  wxSize FittedSize;  // fitting lays out anew, for which wxGTK reports the same size once more
};

CQORPPropList::Impl::Impl(CQORPPropList& owner, const std::wstring& name)
    : Owner(owner),
      Grid(
          new wxPropertyGrid(&owner, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxPG_DEFAULT_STYLE | wxTAB_TRAVERSAL)),
      Description(new wxStaticText(&owner, wxID_ANY, wxString(), wxDefaultPosition, owner.FromDIP(wxSize(-1, 40)),
                                   wxST_NO_AUTORESIZE)) {
  Grid->SetValidationFailureBehavior(wxPG_VFB_MARK_CELL);  // not a box that holds everything up
  Grid->SetExtraStyle(wxPG_EX_HELP_AS_TOOLTIPS);
  Grid->SetCaptionTextColour(Grid->GetCellTextColour());  // the theme's own grey can hardly be read
  SetAccessibleName(*Grid, name);
  auto sizer = std::make_unique<wxBoxSizer>(wxVERTICAL);
  sizer->Add(Grid, wxSizerFlags(1).Expand());
  sizer->Add(Description, wxSizerFlags().Expand().Border(wxALL, owner.FromDIP(4)));
  owner.SetSizer(sizer.release());
  Grid->Bind(wxEVT_PG_CHANGED, [this](wxPropertyGridEvent& event) {
    CQORPProp* item = TakeChange(event.GetProperty());
    if (item != nullptr && Owner.OnChange) Owner.OnChange(*item);
  });
  Grid->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    if (event.GetSize() == FittedSize) return;
    FittedSize = event.GetSize();
    Grid->CallAfter([this] {
      FitNames();
      ShowDescription();
    });
  });
  Grid->Bind(wxEVT_PG_SELECTED, [this](wxPropertyGridEvent&) { ShowDescription(); });
}

// No name is cut off. wxGTK 3.2 moves the line between names and values without painting them anew and leaves the
// editor of a value where it was; drop what follows the move when 3.4 is the floor.
void CQORPPropList::Impl::FitNames() {
  Grid->SetSplitterLeft();
  if (wxPGProperty* selected = Grid->GetSelection(); selected != nullptr && !Grid->IsEditorsValueModified()) {
    const bool hadFocus = Grid->GetEditorControl() != nullptr && Grid->GetEditorControl()->HasFocus();
    Grid->ClearSelection();
    Grid->SelectProperty(selected, hadFocus);
  }
  Grid->Refresh();
}

void CQORPPropList::Impl::Add(wxPGProperty& parent, CQORPProp& item) {
  wxPGProperty& editor = *Grid->Insert(&parent, -1, MakeEditor(item).release());  // the list owns it
  for (const auto& child : item.GetSubItems()) Add(editor, *child);
}

void CQORPPropList::Impl::ShowDescription() {
  const CQORPProp* item = ItemOf(Grid->GetSelection());
  const std::wstring none = Owner.Items.empty() ? Hint : std::wstring();
  Description->SetLabelText(item == nullptr ? none : item->GetDescription());
  Description->Wrap(Description->GetSize().x);
}

CQORPPropList::CQORPPropList() = default;
CQORPPropList::~CQORPPropList() {
  OnChange = nullptr;
  DestroyChildren();
}

bool CQORPPropList::Create(wxWindow* parent, int id, const std::wstring& name) {
  if (!wxPanel::Create(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, L"Properties")) return false;
  Parts = std::make_unique<Impl>(*this, name);
  return true;
}

void CQORPPropList::RemoveAll() {
  if (!Parts) return;
  Parts->Grid->Clear();
  Items.clear();
  Parts->ShowDescription();
}

CQORPProp& CQORPPropList::AddProperty(std::unique_ptr<CQORPProp> item) {
  CQORPProp& added = *Items.emplace_back(std::move(item));
  if (!Parts) return added;
  Parts->Add(*Parts->Grid->GetRoot(), added);
  Parts->FitNames();
  Parts->ShowDescription();
  return added;
}

void CQORPPropList::SetHint(const std::wstring& hint) {
  if (!Parts) return;
  Parts->Hint = hint;
  Parts->ShowDescription();
}

void CQORPPropList::SetFocus() {
  if (!Parts) return wxPanel::SetFocus();
  wxPropertyGrid& grid = *Parts->Grid;
  wxPGProperty* first = grid.wxPropertyGridInterface::GetFirst(wxPG_ITERATE_NORMAL);
  if (first != nullptr && grid.GetSelection() == nullptr) grid.SelectProperty(first);
  grid.SetFocus();
}
