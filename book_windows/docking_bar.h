// CVELDSDockingControlBar: the base of the plug-ins' bars, whose place is kept under the bar's own key, and
// CVELDMDIChildWnd: the frame that such a bar stands in as a tab. Used on the terminal's calling thread only.
#pragma once

#include <string>

#include "toolkit/docking_control_bar.h"

class CVELDMDIChildWnd : public CQORPMDIChildWnd {
 public:
  // The focus passes to the bar that it holds.
  explicit CVELDMDIChildWnd(wxWindow* parent);
};

class CVELDSDockingControlBar : public CQORPDockingControlBar {
 public:
  // Under ProfileKey, whatever section and index the caller names.
  bool LoadState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id) override;
  bool SaveState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id) override;
  CQORPMDIChildWnd* CreateTabbedFrame(wxWindow* parent) override { return new CVELDMDIChildWnd(parent); }

  std::string ProfileKey;  // the book's key
};
