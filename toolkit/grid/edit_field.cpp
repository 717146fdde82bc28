#include "toolkit/grid/edit_field.h"

#include <wx/access.h>

#include <string_view>

#include "toolkit/system/make_child.h"
#include "toolkit/system/native_windows.h"

namespace {
constexpr std::wstring_view kFieldKeys = L"ACVXYZ";
}  // namespace

#if wxUSE_ACCESSIBILITY
namespace {

// On systems that report the text of an edit as its value, the name has to come from here.
class FieldAccessible : public wxAccessible {
 public:
  FieldAccessible(wxWindow& field, const std::wstring& name) : wxAccessible(&field), Name(name) {}
  wxAccStatus GetName(int, wxString* name) override {
    *name = Name;
    return wxACC_OK;
  }

 private:
  std::wstring Name;
};

}  // namespace

void NameField(wxWindow& field, const std::wstring& name) {
  field.SetAccessible(&MakeChild<FieldAccessible>(field, name));
}
#else
void NameField(wxWindow& field, const std::wstring& name) {
  SetAccessibleName(field, name);
}
#endif

void KeepInField(wxEvent& event) {
  event.StopPropagation();
  event.Skip();
}

bool IsForField(const wxKeyEvent& event) {
  if (!event.ControlDown()) return true;
  const int key = event.GetKeyCode();
  return key >= WXK_START || key < WXK_SPACE || key == WXK_DELETE ||
         kFieldKeys.find(static_cast<wchar_t>(key)) != std::wstring_view::npos;
}

// Ctrl and Alt type characters on many keyboards.
bool IsForProgram(const wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  return (event.AltDown() && !event.ControlDown()) || (key >= WXK_F1 && key <= WXK_F24);
}
