#include "toolkit/model/dialog_parts.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::uint32_t kButtonBits = 0xF;
constexpr std::uint32_t kDefaultBits = 0xF00;
constexpr std::uint32_t kOwnButtons = 0x100;
constexpr int kOwnIds[] = {1000, 1001};
constexpr int kCancelId = 2;

struct CaptionRow {
  int Id;
  const wchar_t* Caption;
};
constexpr CaptionRow kCaptions[] = {
    {1, L"OK"},   {2, L"Cancel"}, {3, L"&Abort"},      {4, L"&Retry"},     {5, L"&Ignore"},
    {6, L"&Yes"}, {7, L"&No"},    {10, L"&Try Again"}, {11, L"&Continue"},
};

// By the low bits of the style; 0 ends a row.
constexpr int kButtonIds[][3] = {{1}, {1, 2}, {3, 4, 5}, {6, 7, 2}, {6, 7}, {4, 2}, {2, 10, 11}};

std::vector<MessageButton> StandardButtons(std::uint32_t bits) {
  std::vector<MessageButton> buttons;
  for (const int id : kButtonIds[bits < std::size(kButtonIds) ? bits : 0]) {
    for (const CaptionRow& row : kCaptions)
      if (row.Id == id) buttons.push_back({row.Id, row.Caption});
  }
  return buttons;
}

int CloseIdOf(const std::vector<MessageButton>& buttons) {
  if (buttons.size() == 1) return buttons.front().Id;
  const auto isCancel = [](const MessageButton& button) { return button.Id == kCancelId; };
  return std::any_of(buttons.begin(), buttons.end(), isCancel) ? kCancelId : 0;
}

}  // namespace

MessageButtons ButtonsOfStyle(std::uint32_t style, const std::array<std::wstring, 2>& ownCaptions) {
  MessageButtons result;
  if ((style & kDefaultBits) == kOwnButtons && (style & kButtonBits) == 0) {
    for (std::size_t i = 0; i < ownCaptions.size(); ++i) result.Buttons.push_back({kOwnIds[i], ownCaptions[i]});
  } else {
    result.Buttons = StandardButtons(style & kButtonBits);
    const std::size_t wanted = (style & kDefaultBits) >> 8;
    if (wanted < result.Buttons.size()) result.Default = wanted;
  }
  result.CloseId = CloseIdOf(result.Buttons);
  return result;
}
