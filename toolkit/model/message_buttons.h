// The buttons of a message box by the bits of its style.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct MessageButton {
  int Id;
  std::wstring Caption;  // an & marks the letter that presses it
};

struct MessageButtons {
  std::vector<MessageButton> Buttons;  // from left to right
  std::size_t Default = 0;             // the index of the default button
  int CloseId = 0;                     // the answer of closing; 0: the box cannot be closed
};

MessageButtons ButtonsOfStyle(std::uint32_t style, const std::array<std::wstring, 2>& ownCaptions);
