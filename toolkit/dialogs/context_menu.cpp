#include "toolkit/dialogs/context_menu.h"

#include <wx/menu.h>
#include <wx/window.h>

#include "toolkit/system/make_child.h"

namespace {

// Entries have ids of their own on the way through wxWidgets, which does not take every number on each platform.
constexpr int kFirstId = wxID_HIGHEST + 1;

class ContextMenu {
 public:
  ContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items) : Owner(owner), Items(items) {
    wxMenu* level = &Menu;
    for (std::size_t i = 0; i < Items.size(); ++i) {
      if (Items[i].Level == 0) level = &Menu;
      level = AddItem(*level, kFirstId + static_cast<int>(i), Items[i]);
    }
    Menu.Bind(wxEVT_MENU, [this](wxCommandEvent& event) { Chosen = event.GetId() - kFirstId; });
  }

  void Show(const wxPoint& point) {
    Owner.PopupMenu(&Menu, Owner.ScreenToClient(point));
    RunChosen();
  }

  bool Choose(const std::vector<std::wstring>& texts) {
    const wxMenuItem* item = Find(texts);
    if (item == nullptr || !item->IsEnabled()) return false;
    Chosen = item->GetId() - kFirstId;
    return RunChosen();
  }

 private:
  // Gives back the menu that the next entry goes to.
  wxMenu* AddItem(wxMenu& level, int id, const CQORPMenuItem& item) {
    switch (item.What) {
      case CQORPMenuItem::Kind::Separator:
        level.AppendSeparator();
        break;
      case CQORPMenuItem::Kind::Submenu: {
        wxMenu& submenu = MakeChild<wxMenu>();
        level.AppendSubMenu(&submenu, item.Text);
        return &submenu;
      }
      case CQORPMenuItem::Kind::Command:
        Update(*level.Append(id, item.Text), item.Id);
        break;
    }
    return &level;
  }

  void Update(wxMenuItem& entry, int id) {
    wxUpdateUIEvent update(id);
    update.SetEventObject(&Owner);
    Owner.GetEventHandler()->ProcessEvent(update);
    if (update.GetSetEnabled()) entry.Enable(update.GetEnabled());
    if (update.GetSetText()) entry.SetItemLabel(update.GetText());
  }

  const wxMenuItem* Find(const std::vector<std::wstring>& texts) const {
    const wxMenu* level = &Menu;
    const wxMenuItem* found = nullptr;
    for (const std::wstring& text : texts) {
      if (level == nullptr) return nullptr;
      found = nullptr;
      for (const wxMenuItem* item : level->GetMenuItems())
        if (!item->IsSeparator() && item->GetItemLabelText() == text) found = item;
      if (found == nullptr) return nullptr;
      level = found->GetSubMenu();
    }
    return level == nullptr ? found : nullptr;
  }

  bool RunChosen() {
    if (Chosen < 0) return false;
    wxCommandEvent command(wxEVT_MENU, Items[static_cast<std::size_t>(Chosen)].Id);
    command.SetEventObject(&Owner);
    return Owner.GetEventHandler()->ProcessEvent(command);
  }

  wxWindow& Owner;
  std::span<const CQORPMenuItem> Items;
  wxMenu Menu;
  int Chosen = -1;
};

}  // namespace

void ShowContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items, const wxPoint& point) {
  ContextMenu(owner, items).Show(point);
}

bool ChooseFromContextMenu(wxWindow& owner, std::span<const CQORPMenuItem> items,
                           const std::vector<std::wstring>& texts) {
  return ContextMenu(owner, items).Choose(texts);
}
