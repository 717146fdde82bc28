#include "book_windows/docking_bar.h"

#include "foundations/wide_text.h"

namespace {
constexpr int kStateIndex = 1;
}

CVELDMDIChildWnd::CVELDMDIChildWnd(wxWindow* parent) : CQORPMDIChildWnd(parent) {
  Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
    event.Skip();
    if (GetBar() != nullptr) GetBar()->SetFocus();
  });
}

bool CVELDSDockingControlBar::LoadState(CQORPRegistry& settings, const std::wstring& /*section*/, int /*index*/,
                                        std::uint32_t id) {
  return CQORPDockingControlBar::LoadState(settings, NarrowToWide(std::string(ProfileKey)), kStateIndex, id);
}

bool CVELDSDockingControlBar::SaveState(CQORPRegistry& settings, const std::wstring& /*section*/, int /*index*/,
                                        std::uint32_t id) {
  return CQORPDockingControlBar::SaveState(settings, NarrowToWide(std::string(ProfileKey)), kStateIndex, id);
}
