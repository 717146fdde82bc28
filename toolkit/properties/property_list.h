// CQORPProp: one item of a property list: a name, a value of one of four kinds, a description. A group head has no
// value and holds items instead.
#pragma once

#include <wx/font.h>
#include <wx/panel.h>
#include <wx/propgrid/propgrid.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "toolkit/model/cell_colors.h"
#include "toolkit/system/toolkit_export.h"

class TOOLKIT_EXPORT CQORPProp {
 public:
  // Nothing for a group head.
  using Value = std::variant<std::monostate, std::int32_t, bool, ColorRef, wxFont>;

  // A group head.
  explicit CQORPProp(std::wstring name);
  CQORPProp(std::wstring name, std::int32_t value, int id);
  CQORPProp(std::wstring name, bool value, int id);
  virtual ~CQORPProp();
  CQORPProp(const CQORPProp&) = delete;
  CQORPProp& operator=(const CQORPProp&) = delete;

  const std::wstring& GetName() const noexcept { return Name; }
  const std::wstring& GetDescription() const noexcept { return Description; }
  // -1 for a group head.
  int GetId() const noexcept { return Id; }
  const Value& GetValue() const noexcept { return Current; }
  // Shown when the item is put into a list.
  void SetValue(Value value) { Current = std::move(value); }

  bool IsGroup() const noexcept { return std::holds_alternative<std::monostate>(Current); }
  CQORPProp& AddSubItem(std::unique_ptr<CQORPProp> item);
  const std::vector<std::unique_ptr<CQORPProp>>& GetSubItems() const noexcept { return SubItems; }

 protected:
  CQORPProp(std::wstring name, Value value, int id, std::wstring description);

 private:
  std::wstring Name;
  std::wstring Description;
  int Id = -1;
  Value Current;
  std::vector<std::unique_ptr<CQORPProp>> SubItems;
};

// A colour, chosen freely or left to the item's owner.
class TOOLKIT_EXPORT CQORPColorProp : public CQORPProp {
 public:
  // The value that leaves the colour to the owner.
  static constexpr ColorRef kAutomatic = 0xFFFFFFFF;
  // Captions of the choices, and the colour that the owner takes for the automatic one.
  struct Buttons {
    std::wstring Other;
    std::wstring Automatic;
    ColorRef AutomaticColor = 0;
  };
  CQORPColorProp(std::wstring name, ColorRef value, Buttons buttons, int id, std::wstring description);
  const Buttons& GetButtons() const noexcept { return Choices; }

 private:
  Buttons Choices;
};

// A font.
class TOOLKIT_EXPORT CQORPFontProp : public CQORPProp {
 public:
  static constexpr std::uint32_t kEffects = 0x100;  // the dialog offers underlines and the like as well
  static constexpr std::uint32_t kScreenFonts = 1;  // which is all that there are
  static constexpr ColorRef kNoColor = 0xFFFFFFFF;
  CQORPFontProp(std::wstring name, const wxFont& value, std::uint32_t dialogFlags, ColorRef dialogColor, int id,
                std::wstring description);
  std::uint32_t GetDialogFlags() const noexcept { return DialogFlags; }
  ColorRef GetDialogColor() const noexcept { return DialogColor; }

 private:
  std::uint32_t DialogFlags;
  ColorRef DialogColor;
};

// CQORPPropList: the window of a property list: groups that fold, an editor for each kind of value, the description of
// the selected item below. It owns its items.
class TOOLKIT_EXPORT CQORPPropList : public wxPanel {
 public:
  CQORPPropList();
  ~CQORPPropList() override;
  // The name is what a screen reader says of the list. False when no window could be made.
  bool Create(wxWindow* parent, int id, const std::wstring& name);

  // Not from within OnChange.
  void RemoveAll();
  // Below those that are there; a group comes with all that it holds.
  CQORPProp& AddProperty(std::unique_ptr<CQORPProp> item);
  const std::vector<std::unique_ptr<CQORPProp>>& GetProperties() const noexcept { return Items; }
  // Said below the list while it is empty.
  void SetHint(const std::wstring& hint);

  // The user changed a value, which the item holds by then.
  std::function<void(CQORPProp& item)> OnChange;

  // The first item is selected where none is.
  void SetFocus() override;

 private:
  class Impl;
  std::unique_ptr<Impl> Parts;
  std::vector<std::unique_ptr<CQORPProp>> Items;
};

// What a property list edits an item with: a property of wxWidgets for each kind of value.

// A property that shows the item, without those below it. The item outlives it.
std::unique_ptr<wxPGProperty> MakeEditor(CQORPProp& item);
// The item that it was made for; of a part of a value, as the size of a font, that of the whole. Null for none.
CQORPProp* ItemOf(const wxPGProperty* editor);
// Puts the value that the user chose into the item, and gives it; null where it is the one that the item has.
CQORPProp* TakeChange(const wxPGProperty* editor);
