#include "toolkit/property_editors.h"

#include <wx/fontdlg.h>
#include <wx/propgrid/advprops.h>

#include <limits>

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
