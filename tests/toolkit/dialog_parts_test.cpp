#include "toolkit/model/dialog_parts.h"

#include <gtest/gtest.h>

namespace {

TEST(MessageButtons, FollowTheBitsOfTheStyle) {
  const struct {
    std::uint32_t Style;
    const wchar_t* Buttons;  // with ids
    std::size_t Default;
    int CloseId;
  } rows[] = {
      {0x00, L"OK 1", 0, 1},
      {0x10, L"OK 1", 0, 1},
      {0x70, L"OK 1", 0, 1},
      {0x07, L"OK 1", 0, 1},
      {0x0F, L"OK 1", 0, 1},
      {0x21, L"OK 1, Cancel 2", 0, 2},
      {0x32, L"&Abort 3, &Retry 4, &Ignore 5", 0, 0},
      {0x103, L"&Yes 6, &No 7, Cancel 2", 1, 2},
      {0x203, L"&Yes 6, &No 7, Cancel 2", 2, 2},
      {0x303, L"&Yes 6, &No 7, Cancel 2", 0, 2},
      {0x104, L"&Yes 6, &No 7", 1, 0},
      {0x204, L"&Yes 6, &No 7", 0, 0},
      {0x05, L"&Retry 4, Cancel 2", 0, 2},
      {0x06, L"Cancel 2, &Try Again 10, &Continue 11", 0, 2},
      {0x100, L"&Left 1000, Right 1001", 0, 0},
      {0x80140, L"&Left 1000, Right 1001", 0, 0},
      {0x200, L"OK 1", 0, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Style);
    const MessageButtons made = ButtonsOfStyle(row.Style, {L"&Left", L"Right"});
    std::wstring text;
    for (const MessageButton& button : made.Buttons)
      text += (text.empty() ? L"" : L", ") + button.Caption + L" " + std::to_wstring(button.Id);
    EXPECT_EQ(text, row.Buttons);
    EXPECT_EQ(made.Default, row.Default);
    EXPECT_EQ(made.CloseId, row.CloseId);
  }
}

}  // namespace
