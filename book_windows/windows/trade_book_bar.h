// CTradeBookBar: the docking bar of a book. It holds one dialog, answers for closing, and is the book's window to the
// model.
#pragma once

#include "book_windows/windows/trade_book_dialog.h"
#include "toolkit/bars/docking_control_bar.h"

class TradeBookScreen;

// The frame of a tabbed bar. Passes the focus on to the bar.
class CVELDMDIChildWnd : public CQORPMDIChildWnd {
 public:
  explicit CVELDMDIChildWnd(wxWindow* parent);
};

// The base of the plug-ins' bars: the toolkit keeps their place under the bar's own key.
class CVELDSDockingControlBar : public CQORPDockingControlBar {
 public:
  virtual const std::string& ProfileKey() const = 0;
  // Under ProfileKey; section and index of the caller are ignored.
  bool LoadState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id) override;
  bool SaveState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id) override;
  CQORPMDIChildWnd* CreateTabbedFrame(wxWindow* parent) override;
};

class CTradeBookBar : public CVELDSDockingControlBar, public BookWindow {
 public:
  CTradeBookBar(TradeBookScreen& screen, Book& book);
  ~CTradeBookBar() override;

  // False if a window could not be made.
  bool CreateBook(CQORPDockingManager& manager, const wxRect& rect, std::uint32_t id);
  CTradeBookGrid* Grid() const noexcept { return Dialog->Grid; }

  void OnPressCloseButton() override;
  int OnTabCloseButton() override;
  bool PreTranslateMessage(wxKeyEvent& event) override;
  void OnBarFocus() override;

  void OnRowsChanged(bool replaced) override;
  void OnTotalsChanged() override { Dialog->ShowSummary(); }
  void OnTitleChanged() override;
  void OnSortChanged() override { Grid()->ShowSort(); }
  void OnSettingsChanged() override { Grid()->Properties.ShowSettings(); }
  std::vector<int> BeginVirtualMode() override { return Grid()->BeginVirtualMode(); }
  int CurrentRow() override;
  void ClearCurrentRow() override { Grid()->SetCurSel(-1); }
  void ShowBar(bool shown) override { ShowControlBar(shown); }
  void FocusBar() override { SetFocus(); }
  void FocusGrid() override { Grid()->SetFocus(); }
  bool HoldsFocus() const override;
  bool Floats() const override { return GetParentMiniFrame() != nullptr; }
  BookPlace Place() const override;
  void LoadPlace(CQORPRegistry& settings) override { LoadState(settings, {}, 0, GetDlgCtrlID()); }
  void SavePlace(CQORPRegistry& settings) override { SaveState(settings, {}, 0, GetDlgCtrlID()); }
  void SaveColumnProfile() override { Grid()->SaveColumnProfile(); }
  GridFont Font() const override { return Grid()->StoredFont(); }
  void PopulateProperties(CQORPPropList& list) override { Grid()->PopulateProperties(list); }
  void ApplyProperty(const CQORPProp& property) override { Grid()->Properties.ApplyProperty(property); }
  void* BarAddress() override { return this; }
  const void* GridAddress() const override { return static_cast<const wxWindow*>(Grid()); }
  void DestroyBar() override { Destroy(); }

  const std::string& ProfileKey() const override;

  CDlgTradeBook* Dialog = nullptr;  // a child window
  Book& Shown;

 private:
  void PlaceDialog();
  void DrawFrame();

  TradeBookScreen& Screen;
};
