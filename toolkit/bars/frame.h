// CQORPFrame: the main frame of a terminal of the toolkit: a docking manager over its client area, keys offered to the
// bar with the focus before any control sees them.
#pragma once

#include <wx/frame.h>

#include <memory>
#include <string>

#include "toolkit/bars/docking_manager.h"
#include "toolkit/system/toolkit_export.h"

class TOOLKIT_EXPORT CQORPFrame : public wxFrame {
 public:
  CQORPFrame(wxWindow* parent, int id, const std::wstring& title, const wxRect& rect);
  // Destroys the bars first, while the frame is still whole.
  ~CQORPFrame() override;
  CQORPDockingManager& GetDockingManager() noexcept { return *Docking; }

 private:
  std::unique_ptr<CQORPDockingManager> Docking;
};
