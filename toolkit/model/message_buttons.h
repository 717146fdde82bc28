// Which buttons the style bits of a message box ask for. No window.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct MessageButton {
  int Id;
  std::wstring Caption;  // & before the letter that presses it
};

struct MessageButtons {
  std::vector<MessageButton> Buttons;  // as they stand, the first first
  std::size_t Default = 0;             // the one that Enter presses at first
  int CloseId = 0;                     // what closing answers; 0: it cannot be closed
};

MessageButtons ButtonsOfStyle(std::uint32_t style, const std::array<std::wstring, 2>& ownCaptions);
