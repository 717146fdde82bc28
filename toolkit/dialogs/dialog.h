// CQORPDialog: a dialog made from a table of controls in dialog units, with controls anchored to its edges: a child of
// another window, or a modal window. CQORPFileDialog: the system's dialog for the name of a file to save.
#pragma once

#include <wx/dialog.h>
#include <wx/filedlg.h>
#include <wx/panel.h>
#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "toolkit/dialogs/controls.h"
#include "toolkit/system/toolkit_export.h"

// One control of a dialog, in dialog units of its font.
struct DialogControl {
  int Id;
  const wchar_t* Text;
  int X, Y, Width, Height;
};

class TOOLKIT_EXPORT CQORPDialog : public wxPanel {
 public:
  // The share of a change of the dialog's size that a control follows.
  struct Anchor {
    int MoveXPercent = 0, MoveYPercent = 0, SizeXPercent = 0, SizeYPercent = 0;
  };

  CQORPDialog() = default;
  ~CQORPDialog() override;

  // Makes a child dialog of that size in dialog units, with a CQORPStatic for each control. The parent owns it.
  bool CreateChild(wxWindow* parent, int id, int widthUnits, int heightUnits, std::span<const DialogControl> controls);
  // Makes a hidden window with a caption around the dialog. It is destroyed with this object, which may be local.
  bool CreateModal(wxWindow* parent, const std::wstring& caption, int widthUnits, int heightUnits,
                   std::span<const DialogControl> controls);
  // Shows the window until EndDialog, and returns its result.
  int DoModal();
  void EndDialog(int result);
  // The actions of the buttons OK and Cancel. Escape and closing the window cancel.
  virtual void OnOK() { EndDialog(wxID_OK); }
  virtual void OnCancel() { EndDialog(wxID_CANCEL); }

  CQORPStatic* GetStatic(int id) const;  // null for none of that id
  wxRect FromDialogUnits(const wxRect& units) const;
  // Of the dialog and its statics.
  bool SetFont(const wxFont& font) override;

  // Relative to the present place of the control and the present size of the dialog.
  void AddAnchor(wxWindow* control, const Anchor& anchor);
  // Places the anchored controls; runs with each change of the size as well.
  void AdjustControlsLayout();

 protected:
  // Runs before the modal window is shown.
  virtual void OnInitDialog() {}
  // Sets size and least size of the modal window to that of the sizer.
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

// FocusReturn: returns the focus to a window after a dialog has closed. Most window managers give it to the main
// window, so a floating bar would lose it.
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

// The system's dialog for the name of a file to save.
class TOOLKIT_EXPORT CQORPFileDialog : public wxFileDialog {
 public:
  // The dialog starts in the folder of the proposal, or its nearest existing parent; in the current folder if the
  // proposal has none. The filter is the text of the list of types, with the extension in parentheses; or several
  // types, as wxFileDialog takes them.
  CQORPFileDialog(wxWindow* parent, const std::filesystem::path& proposal, const std::wstring& extension,
                  const std::wstring& filter);

  // The chosen path, with the extension of the type if the user typed none; asks before it replaces a file. Empty if
  // the user cancels.
  std::optional<std::filesystem::path> AskForPath();

  // For a wxModalDialogHook that answers for the user and ends the dialog with wxID_OK.
  void AnswerWith(const std::filesystem::path& path) { Answer = path; }
  const std::filesystem::path& Proposal() const noexcept { return Proposed; }

 private:
  bool MayReplace(const std::filesystem::path& path);
  std::wstring ChosenExtension() const;

  std::filesystem::path Proposed;
  std::wstring Extension;
  std::filesystem::path Answer;  // empty: the dialog's own
};
