#include "terminal/windows/frame/main_frame.h"

#include <wx/defs.h>
#include <wx/menu.h>
#include <wx/statusbr.h>

#include <algorithm>
#include <iostream>
#include <utility>

#include "terminal/windows/frame/window_tools.h"
#include "toolkit/dialogs/message_box.h"
#include "toolkit/system/make_child.h"

namespace {

int WxId(int id) {
  return wxID_HIGHEST + 1 + id;
}

wxString ItemText(const wchar_t* text, const KeyPress& key) {
  const std::string name = KeyPressText(key);
  return name.empty() ? wxString(text) : wxString(text) + L"\t" + wxString::FromUTF8(name);
}

wxItemKind KindOf(MenuEntry::Form form) {
  switch (form) {
    case MenuEntry::Form::Check:
      return wxITEM_CHECK;
    case MenuEntry::Form::Radio:
      return wxITEM_RADIO;
    case MenuEntry::Form::Plain:
      break;
  }
  return wxITEM_NORMAL;
}

wxMenuItem* MenuItemOf(const wxMenu& menu, const std::wstring& text) {
  for (wxMenuItem* item : menu.GetMenuItems())
    if (item->GetItemLabelText() == text) return item;
  return nullptr;
}

constexpr int kLeastSidePx = 100;
constexpr int kStatusWidths[] = {-5, 150, -2, 120, 110};  // as the fields of StatusField

}  // namespace

MainFrame::MainFrame(const wxRect& rect, std::function<void(int)> run)
    : CQORPFrame(nullptr, wxID_ANY, L"Trading Terminal", rect), Run(std::move(run)) {
  SetMenuBar(&MakeChild<wxMenuBar>());
  AddStatusBar();
  HideMenuBarUntilShown(*this);
  NoteRect();
  const auto note = [this](auto& event) {
    event.Skip();
    NoteRect();
  };
  Bind(wxEVT_SIZE, [note](wxSizeEvent& event) { note(event); });
  Bind(wxEVT_MOVE, [note](wxMoveEvent& event) { note(event); });
}

void MainFrame::NoteRect() {
  if (!IsMaximized() && !IsIconized() && !IsTiny()) NormalRect = GetRect();
}

bool MainFrame::IsTiny() const {
  const wxSize size = GetSize();
  return std::min(size.x, size.y) < FromDIP(kLeastSidePx);
}

// wxGTK 3.2: with a slow window manager a frame may be shown in the size of its menu bar, and stays so. Drop when 3.4
// is the floor.
void MainFrame::GrowIfTiny() {
  if (IsShown() && !IsIconized() && !IsMaximized() && IsTiny()) SetSize(NormalRect.GetSize());
}

void MainFrame::PlaceAt(const wxRect& rect) {
  if (IsIconized()) Iconize(false);
  if (IsMaximized()) Maximize(false);
  SetSize(rect);
}

void MainFrame::AddEntry(const MenuEntry& entry, const wchar_t* menuBehind) {
  wxMenu& menu = MenuOf(entry, menuBehind);
  const int id = WxId(entry.Id);
  if (entry.BeginsGroup) menu.AppendSeparator();
  menu.Append(id, ItemText(entry.Text, entry.Key), entry.Help, KindOf(entry.Kind));
  Bind(
      wxEVT_MENU, [this, chosen = entry.Id](wxCommandEvent&) { Run(chosen); }, id);
  AddKey(id, entry.Key);
}

wxMenu& MainFrame::MenuOf(const MenuEntry& entry, const wchar_t* menuBehind) {
  wxMenuBar& bar = *GetMenuBar();
  const auto placeOf = [&bar](const wchar_t* title) { return bar.FindMenu(wxMenuItem::GetLabelText(title)); };
  if (const int place = placeOf(entry.Menu); place != wxNOT_FOUND) return *bar.GetMenu(static_cast<std::size_t>(place));
  const int behind = menuBehind == nullptr ? wxNOT_FOUND : placeOf(menuBehind);
  auto& menu = MakeChild<wxMenu>();
  bar.Insert(behind == wxNOT_FOUND ? bar.GetMenuCount() : static_cast<std::size_t>(behind), &menu, entry.Menu);
  return menu;
}

// wxGTK 3.2: the keys of menu entries do nothing in floating panes, those of the frame's table do. Drop when 3.4 is the
// floor.
void MainFrame::AddKey(int wxId, const KeyPress& key) {
  if (WxKeyCode(key) == 0) return;
  KeyEntries.emplace_back(WxHeldKeys(key), WxKeyCode(key), wxId);
  SetAcceleratorTable(wxAcceleratorTable(static_cast<int>(KeyEntries.size()), KeyEntries.data()));
}

void MainFrame::AddStatusBar() {
  constexpr int kFields = static_cast<int>(std::size(kStatusWidths));
  wxStatusBar& status = *CreateStatusBar(kFields);
  int widths[kFields];
  for (int field = 0; field < kFields; ++field)
    widths[field] = kStatusWidths[field] < 0 ? kStatusWidths[field] : FromDIP(kStatusWidths[field]);
  status.SetStatusWidths(kFields, widths);
}

void MainFrame::Check(int id, bool checked) {
  GetMenuBar()->Check(WxId(id), checked);
}

void MainFrame::EnableEntry(int id, bool enabled) {
  GetMenuBar()->Enable(WxId(id), enabled);
}

void MainFrame::SetStatus(StatusField field, const std::wstring& text) {
  wxStatusBar& status = *GetStatusBar();
  wxRect place;
  // A frame that is too narrow for the field, as before its first size: wxGTK 3.2 would paint a negative rectangle.
  if (!status.GetFieldRect(static_cast<int>(field), place) || place.IsEmpty()) return;
  if (status.GetStatusText(static_cast<int>(field)) != text) status.SetStatusText(text, static_cast<int>(field));
}

bool MainFrame::RunMenu(const std::vector<std::wstring>& texts) {
  const int place = texts.empty() ? wxNOT_FOUND : GetMenuBar()->FindMenu(texts.front());
  if (place == wxNOT_FOUND) return false;
  wxMenu* menu = GetMenuBar()->GetMenu(static_cast<std::size_t>(place));
  wxMenuItem* item = nullptr;
  for (std::size_t level = 1; level < texts.size(); ++level) {
    if (menu == nullptr) return false;
    item = MenuItemOf(*menu, texts[level]);
    if (item == nullptr) return false;
    menu = item->GetSubMenu();
  }
  if (item == nullptr || !item->IsEnabled() || menu != nullptr) return false;
  wxCommandEvent chosen(wxEVT_MENU, item->GetId());
  chosen.SetEventObject(this);
  return GetEventHandler()->ProcessEvent(chosen);
}

namespace {

constexpr std::uint32_t kIconStop = 0x10;
constexpr std::uint32_t kIconInformation = 0x40;

void Show(wxWindow* parent, const std::wstring& caption, const std::wstring& text, std::uint32_t style) {
  static bool isUp = false;
  if (std::exchange(isUp, true)) return;
  CQORPMessageBox box(
      {.Parent = parent, .Caption = caption, .Text = text, .Style = style, .ButtonCaptions = {}, .CheckCaption = {}});
  box.ShowModal();
  isUp = false;
}

}  // namespace

void ShowFailure(wxWindow* parent, const std::string& sentence) {
  std::cerr << "terminal: " << sentence << std::endl;
  Show(parent, L"Terminal", Wide(sentence), kIconStop);
}

void ShowMessage(wxWindow* parent, const std::wstring& caption, const std::wstring& text) {
  Show(parent, caption, text, kIconInformation);
}

namespace {

struct CodePair {
  std::uint8_t Code;
  int WxCode;
};
constexpr CodePair kCodes[] = {
    {0x08, WXK_BACK},  {0x09, WXK_TAB},    {0x0D, WXK_RETURN},   {0x1B, WXK_ESCAPE},
    {0x20, WXK_SPACE}, {0x21, WXK_PAGEUP}, {0x22, WXK_PAGEDOWN}, {0x23, WXK_END},
    {0x24, WXK_HOME},  {0x25, WXK_LEFT},   {0x26, WXK_UP},       {0x27, WXK_RIGHT},
    {0x28, WXK_DOWN},  {0x2D, WXK_INSERT}, {0x2E, WXK_DELETE},   {0x5D, WXK_WINDOWS_MENU},
};
constexpr std::uint8_t kFirstFunctionKey = 0x70;
constexpr std::uint8_t kLastFunctionKey = 0x7B;

}  // namespace

int WxKeyCode(const KeyPress& key) {
  if (key.Code >= kFirstFunctionKey && key.Code <= kLastFunctionKey) return WXK_F1 + key.Code - kFirstFunctionKey;
  if ((key.Code >= 'A' && key.Code <= 'Z') || (key.Code >= '0' && key.Code <= '9')) return key.Code;
  for (const CodePair& pair : kCodes)
    if (pair.Code == key.Code) return pair.WxCode;
  return 0;
}

int WxHeldKeys(const KeyPress& key) {
  static_assert(int{wxACCEL_ALT} == wxMOD_ALT && int{wxACCEL_CTRL} == wxMOD_CONTROL &&
                int{wxACCEL_SHIFT} == wxMOD_SHIFT);
  return (key.Ctrl ? wxACCEL_CTRL : 0) | (key.Shift ? wxACCEL_SHIFT : 0) | (key.Alt ? wxACCEL_ALT : 0);
}
