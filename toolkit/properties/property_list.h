// CQORPProp: an item of a property list: a name, a value of one of four types, and a description. A group head has
// items instead of a value.
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
  // std::monostate for a group head.
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
  // Lists read the value when the item is added.
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

// A colour, or automatic.
class TOOLKIT_EXPORT CQORPColorProp : public CQORPProp {
 public:
  // The value for automatic: the owner chooses the colour.
  static constexpr ColorRef kAutomatic = 0xFFFFFFFF;
  // Captions of the choices, and the automatic colour.
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
  static constexpr std::uint32_t kEffects = 0x100;  // the dialog offers underlines and similar effects
  static constexpr std::uint32_t kScreenFonts = 1;  // a no-op: there are only screen fonts
  static constexpr ColorRef kNoColor = 0xFFFFFFFF;
  CQORPFontProp(std::wstring name, const wxFont& value, std::uint32_t dialogFlags, ColorRef dialogColor, int id,
                std::wstring description);
  std::uint32_t GetDialogFlags() const noexcept { return DialogFlags; }
  ColorRef GetDialogColor() const noexcept { return DialogColor; }

 private:
  std::uint32_t DialogFlags;
  ColorRef DialogColor;
};

// CQORPPropList: the window of a property list with collapsible groups, an editor for each type of value, and the
// description of the selected item. It owns its items.
class TOOLKIT_EXPORT CQORPPropList : public wxPanel {
 public:
  CQORPPropList();
  ~CQORPPropList() override;
  // Screen readers say the name. False if no window could be made.
  bool Create(wxWindow* parent, int id, const std::wstring& name);

  // Do not call this in OnChange.
  void RemoveAll();
  // Appends the item with its sub-items.
  CQORPProp& AddProperty(std::unique_ptr<CQORPProp> item);
  const std::vector<std::unique_ptr<CQORPProp>>& GetProperties() const noexcept { return Items; }
  // Shown below the list while it is empty.
  void SetHint(const std::wstring& hint);

  // The user changed the value of the item.
  std::function<void(CQORPProp& item)> OnChange;

  // Selects the first item if none is selected.
  void SetFocus() override;

 private:
  class Impl;
  std::unique_ptr<Impl> Parts;
  std::vector<std::unique_ptr<CQORPProp>> Items;
};

// The editors of a property list: a property of wxWidgets for each type of value.

// The editor of an item without its sub-items. The item must outlive it.
std::unique_ptr<wxPGProperty> MakeEditor(CQORPProp& item);
// The item of the editor; the editor may be a part, such as the size of a font. Null for none.
CQORPProp* ItemOf(const wxPGProperty* editor);
// Writes the value of the editor to its item and returns the item; null if the value is the same.
CQORPProp* TakeChange(const wxPGProperty* editor);
