// CQORPPropList: the window of a property list: groups that fold, an editor for each kind of value, the description of
// the selected item below. It owns its items. Not what a change means: its owner says so. Used on the calling thread of
// the windows only.
#pragma once

#include <wx/panel.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/property.h"
#include "toolkit/toolkit_export.h"

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
