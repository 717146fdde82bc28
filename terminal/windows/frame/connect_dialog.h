// ConnectDialog: the dialog of "Connect...", which asks for the address of a feed and the access to its log.
#pragma once

#include <wx/combobox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <functional>
#include <vector>

#include "terminal/day/day_spec.h"
#include "toolkit/dialogs/dialog.h"

// Enter connects, Escape cancels. An address that is wrong is told in the dialog, which stays.
class ConnectDialog : public CQORPDialog {
 public:
  // Throws std::exception with the reason if it cannot be done.
  using Connect = std::function<void(const DaySpec& feed)>;

  // The feeds are offered, the first is filled in.
  ConnectDialog(std::vector<DaySpec> feeds, Connect connect);
  // False if no window could be made.
  bool CreateOver(wxWindow* parent);

  void OnOK() override;

 protected:
  void OnInitDialog() override;

 private:
  wxSizer* MakeFields();
  wxSizer* MakeAccess();
  wxSizer* MakeButtons();
  void ShowAccess(int place);
  void Browse();
  void ShowFault(const std::wstring& text);

  std::vector<DaySpec> Feeds;
  Connect Open;
  // Child windows.
  wxComboBox* Address = nullptr;
  wxTextCtrl* Access = nullptr;
  wxStaticText* Fault = nullptr;
  wxButton* ConnectButton = nullptr;
};
