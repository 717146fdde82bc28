#include "grid_base/popup_message.h"

#include <utility>

#include "foundations/wide_text.h"
#include "toolkit/popup_window.h"

void ShowPopupMessage(std::string text) {
  constexpr CQORPPopupWndParams kParams{
      .AnimationSpeedMs = 30, .Transparency = 200, .AnimationType = 1, .SmallCaption = false, .AutoCloseMs = 3000};
  ShowCQORPPopupWindow(nullptr, L"", NarrowToWide(std::move(text)), kParams);
}
