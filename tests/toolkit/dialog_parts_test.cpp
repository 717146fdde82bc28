#include "toolkit/model/dialog_parts.h"

#include <gtest/gtest.h>

namespace {

TEST(MessageButtons, FollowTheBitsOfTheStyle) {
  // The style; the buttons with their ids, the default one and the answer of closing.
  const std::tuple<std::uint32_t, std::wstring, std::size_t, int> rows[] = {
      {0x00, L"OK1", 0, 1},
      {0x70, L"OK1", 0, 1},
      {0x07, L"OK1", 0, 1},
      {0x0F, L"OK1", 0, 1},
      {0x21, L"OK1Cancel2", 0, 2},
      {0x32, L"&Abort3&Retry4&Ignore5", 0, 0},
      {0x103, L"&Yes6&No7Cancel2", 1, 2},
      {0x203, L"&Yes6&No7Cancel2", 2, 2},
      {0x303, L"&Yes6&No7Cancel2", 0, 2},
      {0x104, L"&Yes6&No7", 1, 0},
      {0x204, L"&Yes6&No7", 0, 0},
      {0x05, L"&Retry4Cancel2", 0, 2},
      {0x06, L"Cancel2&Try Again10&Continue11", 0, 2},
      {0x80140, L"&Left1000Right1001", 0, 0},
      {0x200, L"OK1", 0, 1},
  };
  for (const auto& [style, buttons, theDefault, closeId] : rows) {
    const MessageButtons made = ButtonsOfStyle(style, {L"&Left", L"Right"});
    std::wstring text;
    for (const MessageButton& button : made.Buttons) text += button.Caption + std::to_wstring(button.Id);
    EXPECT_EQ(std::tuple(style, text, made.Default, made.CloseId), std::tuple(style, buttons, theDefault, closeId));
  }
}

}  // namespace
