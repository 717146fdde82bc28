#include "toolkit/properties/property_list.h"

#include <wx/fontdlg.h>
#include <wx/propgrid/advprops.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <limits>
#include <utility>

#include "toolkit/system/make_child.h"
#include "toolkit/system/native_windows.h"

CQORPProp::CQORPProp(std::wstring name) : Name(std::move(name)) {}
CQORPProp::CQORPProp(std::wstring name, std::int32_t value, int id)
    : CQORPProp(std::move(name), Value(value), id, {}) {}
CQORPProp::CQORPProp(std::wstring name, bool value, int id) : CQORPProp(std::move(name), Value(value), id, {}) {}
CQORPProp::CQORPProp(std::wstring name, Value value, int id, std::wstring description)
    : Name(std::move(name)), Description(std::move(description)), Id(id), Current(std::move(value)) {}
CQORPProp::~CQORPProp() = default;

CQORPProp& CQORPProp::AddSubItem(std::unique_ptr<CQORPProp> item) {
  return *SubItems.emplace_back(std::move(item));
}

CQORPColorProp::CQORPColorProp(std::wstring name, ColorRef value, Buttons buttons, int id, std::wstring description)
    : CQORPProp(std::move(name), Value(value), id, std::move(description)), Choices(std::move(buttons)) {}

CQORPFontProp::CQORPFontProp(std::wstring name, const wxFont& value, std::uint32_t dialogFlags, ColorRef dialogColor,
                             int id, std::wstring description)
    : CQORPProp(std::move(name), Value(value), id, std::move(description)),
      DialogFlags(dialogFlags),
      DialogColor(dialogColor) {}

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
      Grid(&MakeChild<wxPropertyGrid>(&owner, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                      wxPG_DEFAULT_STYLE | wxTAB_TRAVERSAL)),
      Description(&MakeChild<wxStaticText>(&owner, wxID_ANY, wxString(), wxDefaultPosition,
                                           owner.FromDIP(wxSize(-1, 40)), wxST_NO_AUTORESIZE)) {
  Grid->SetValidationFailureBehavior(wxPG_VFB_MARK_CELL);  // not a box that holds everything up
  Grid->SetExtraStyle(wxPG_EX_HELP_AS_TOOLTIPS);
  Grid->SetCaptionTextColour(Grid->GetCellTextColour());  // the theme's own grey can hardly be read
  SetAccessibleName(*Grid, name);
  owner.SetSizer(&MakeChild<wxBoxSizer>(wxVERTICAL));
  owner.GetSizer()->Add(Grid, wxSizerFlags(1).Expand());
  owner.GetSizer()->Add(Description, wxSizerFlags().Expand().Border(wxALL, owner.FromDIP(4)));
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

namespace {

wxColour ColourOf(ColorRef color) {
  return {static_cast<unsigned char>(color), static_cast<unsigned char>(color >> 8),
          static_cast<unsigned char>(color >> 16)};
}

ColorRef ColorOf(const wxColour& colour) {
  return static_cast<ColorRef>(colour.Red() | colour.Green() << 8 | colour.Blue() << 16);
}

constexpr int kAutomaticType = 1;
const char* const kNoLabels[] = {"", "", nullptr};
const long kChoiceTypes[] = {kAutomaticType, wxPG_COLOUR_CUSTOM};

// wxWidgets wants a cache of choices that outlives its property.
wxPGChoices& ChoicesCache() {
  static wxPGChoices cache;
  return cache;
}

// A list of two choices: the automatic colour, and the system's dialog of colours.
class ColorEditor : public wxSystemColourProperty {
 public:
  explicit ColorEditor(const CQORPColorProp& item)
      : wxSystemColourProperty(item.GetName(), wxPG_LABEL, kNoLabels, kChoiceTypes, &ChoicesCache(), wxColour()),
        Buttons(item.GetButtons()) {
    wxPGChoices choices;
    choices.Add(Buttons.Automatic, kAutomaticType);
    choices.Add(Buttons.Other, wxPG_COLOUR_CUSTOM);
    SetChoices(choices);
    const ColorRef value = std::get<ColorRef>(item.GetValue());
    wxVariant shown;
    shown << (value == CQORPColorProp::kAutomatic
                  ? wxColourPropertyValue(kAutomaticType, ColourOf(Buttons.AutomaticColor))
                  : wxColourPropertyValue(wxPG_COLOUR_CUSTOM, ColourOf(value)));
    SetValue(shown);
  }
  wxColour GetColour(int /*index*/) const override { return ColourOf(Buttons.AutomaticColor); }
  int GetCustomColourIndex() const override { return 1; }
  wxString ColourToString(const wxColour& colour, int index, int flags) const override {
    return index == 0 ? wxString(Buttons.Automatic) : wxSystemColourProperty::ColourToString(colour, index, flags);
  }
  ColorRef Color() const {
    const wxColourPropertyValue value = GetVal();
    return value.m_type == kAutomaticType ? CQORPColorProp::kAutomatic : ColorOf(value.m_colour);
  }

 private:
  CQORPColorProp::Buttons Buttons;
};

// The button opens the system's dialog of fonts as the item wants it.
class FontEditor : public wxFontProperty {
 public:
  explicit FontEditor(const CQORPFontProp& item)
      : wxFontProperty(item.GetName(), wxPG_LABEL, std::get<wxFont>(item.GetValue())),
        Effects((item.GetDialogFlags() & CQORPFontProp::kEffects) != 0),
        Color(item.GetDialogColor()) {}

 protected:
  bool DisplayEditorDialog(wxPropertyGrid* list, wxVariant& value) override {
    wxFontData data;
    wxFont font;
    font << value;
    data.SetInitialFont(font);
    data.EnableEffects(Effects);
    if (Color != CQORPFontProp::kNoColor) data.SetColour(ColourOf(Color));
    wxFontDialog dialog(list->GetPanel(), data);
    if (dialog.ShowModal() != wxID_OK) return false;
    value << dialog.GetFontData().GetChosenFont();
    return true;
  }

 private:
  bool Effects;
  ColorRef Color;
};

struct EditorMaker {
  const CQORPProp& Item;
  using Made = std::unique_ptr<wxPGProperty>;

  Made operator()(std::monostate) const { return std::make_unique<wxPropertyCategory>(Item.GetName(), wxPG_LABEL); }
  Made operator()(std::int32_t value) const {
    Made editor = std::make_unique<wxIntProperty>(Item.GetName(), wxPG_LABEL, value);
    editor->SetAttribute(wxPG_ATTR_MIN, long{std::numeric_limits<std::int32_t>::min()});
    editor->SetAttribute(wxPG_ATTR_MAX, long{std::numeric_limits<std::int32_t>::max()});
    return editor;
  }
  Made operator()(bool value) const {
    Made editor = std::make_unique<wxBoolProperty>(Item.GetName(), wxPG_LABEL, value);
    editor->SetAttribute(wxPG_BOOL_USE_CHECKBOX, true);
    return editor;
  }
  Made operator()(ColorRef) const { return std::make_unique<ColorEditor>(static_cast<const CQORPColorProp&>(Item)); }
  Made operator()(const wxFont&) const { return std::make_unique<FontEditor>(static_cast<const CQORPFontProp&>(Item)); }
};

struct ValueReader {
  const wxPGProperty& Editor;
  using Value = CQORPProp::Value;

  Value operator()(std::monostate) const { return {}; }
  Value operator()(std::int32_t) const { return static_cast<std::int32_t>(Editor.GetValue().GetLong()); }
  Value operator()(bool) const { return Editor.GetValue().GetBool(); }
  Value operator()(ColorRef) const { return static_cast<const ColorEditor&>(Editor).Color(); }
  Value operator()(const wxFont&) const {
    wxFont font;
    font << Editor.GetValue();
    return font;
  }
};

}  // namespace

std::unique_ptr<wxPGProperty> MakeEditor(CQORPProp& item) {
  std::unique_ptr<wxPGProperty> editor = std::visit(EditorMaker{item}, item.GetValue());
  static unsigned made = 0;  // a group and an item in it may have one label; names have to differ
  editor->SetName(wxString::Format(L"item-%u", ++made));
  editor->SetHelpString(item.GetDescription());
  editor->SetClientData(&item);
  return editor;
}

namespace {

const wxPGProperty* WholeOf(const wxPGProperty* editor) {
  while (editor != nullptr && editor->GetClientData() == nullptr) editor = editor->GetParent();
  return editor;
}

}  // namespace

CQORPProp* ItemOf(const wxPGProperty* editor) {
  const wxPGProperty* whole = WholeOf(editor);
  return whole == nullptr ? nullptr : static_cast<CQORPProp*>(whole->GetClientData());
}

CQORPProp* TakeChange(const wxPGProperty* editor) {
  CQORPProp* item = ItemOf(editor);
  if (item == nullptr) return nullptr;
  CQORPProp::Value value = std::visit(ValueReader{*WholeOf(editor)}, item->GetValue());
  if (value == item->GetValue()) return nullptr;
  item->SetValue(std::move(value));
  return item;
}
