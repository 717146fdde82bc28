#include "toolkit/button.h"

#include <utility>

CQORPButton::CQORPButton(wxWindow* parent, int id, const std::wstring& caption, std::function<void()> onClick)
    : wxButton(parent, id, caption) {
  Bind(wxEVT_BUTTON, [click = std::move(onClick)](wxCommandEvent&) { click(); });
}
