// CQORPDialog: a dialog made from a table of controls in dialog units, with controls anchored to its edges. As a child
// it fills part of another window; as a window of its own it runs modally.
#pragma once

#include <wx/dialog.h>
#include <wx/panel.h>
#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <span>
#include <string>
#include <vector>

#include "toolkit/dialogs/controls.h"
#include "toolkit/system/toolkit_export.h"

// One control of a dialog template: places in dialog units of the dialog's font.
struct DialogControl {
  int Id;
  const wchar_t* Text;
  int X, Y, Width, Height;
};

class TOOLKIT_EXPORT CQORPDialog : public wxPanel {
 public:
  // How much of a change of the dialog's size a control follows, in hundredths.
  struct Anchor {
    int MoveXPercent = 0, MoveYPercent = 0, SizeXPercent = 0, SizeYPercent = 0;
  };

  CQORPDialog() = default;
  ~CQORPDialog() override;

  // Makes a child dialog of that size in dialog units, with a CQORPStatic for each control. It belongs to the parent.
  bool CreateChild(wxWindow* parent, int id, int widthUnits, int heightUnits, std::span<const DialogControl> controls);
  // The same as a window of its own with a caption, not shown yet; it goes with this object, which may be a local one.
  bool CreateModal(wxWindow* parent, const std::wstring& caption, int widthUnits, int heightUnits,
                   std::span<const DialogControl> controls);
  // Shows the window that CreateModal made until EndDialog, whose result it gives.
  int DoModal();
  void EndDialog(int result);
  // What the buttons of those names do; Escape and closing the window cancel too.
  virtual void OnOK() { EndDialog(wxID_OK); }
  virtual void OnCancel() { EndDialog(wxID_CANCEL); }

  CQORPStatic* GetStatic(int id) const;  // null for none of that id
  wxRect FromDialogUnits(const wxRect& units) const;
  // For the dialog and its statics.
  bool SetFont(const wxFont& font) override;

  // From the place that the control has now, at the size that the dialog has now.
  void AddAnchor(wxWindow* control, const Anchor& anchor);
  // Places the anchored controls for the dialog's size; runs with each change of the size as well.
  void AdjustControlsLayout();

 protected:
  // Runs before a modal dialog is shown.
  virtual void OnInitDialog() {}
  // Makes the modal dialog's window as large as the dialog's sizer asks, which is then its least size.
  void FitWindow();

 private:
  struct Anchored {
    wxWindow* Control;
    Anchor How;
    wxRect Place;
    wxSize DialogSize;
  };
  bool CreateIn(wxWindow* parent, int id, const wxSize& units, std::span<const DialogControl> controls);
  void OnWindowSize(wxSizeEvent& event);
  void OnWindowClose(wxCloseEvent& event);
  void OnWindowKey(wxKeyEvent& event);

  wxDialog* Window = nullptr;  // around a modal dialog
  std::vector<CQORPStatic*> Statics;
  std::vector<Anchored> Anchors;
};

// FocusReturn: gives the focus back to a window when what stood over it has gone. Window managers mostly give it to the
// main window then, and a floating bar would lose it.
class FocusReturn {
 public:
  explicit FocusReturn(wxWindow& window) : Window(&window) {}
  ~FocusReturn() {
    if (!Window || !Window->IsShownOnScreen()) return;
    wxGetTopLevelParent(Window)->Raise();
    Window->SetFocus();
  }
  FocusReturn(const FocusReturn&) = delete;
  FocusReturn& operator=(const FocusReturn&) = delete;

 private:
  wxWeakRef<wxWindow> Window;
};
