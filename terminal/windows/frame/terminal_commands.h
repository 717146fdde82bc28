// The commands of the terminal's menu bar: one table of their menus, texts and keys. Any thread may read.
#pragma once

#include <cstdint>
#include <span>

#include "terminal/script/key_press.h"

enum class TerminalCommand : std::uint8_t {
  OpenDay,
  Exit,
  OpenBook,  // the plug-in's menu entry; its menu comes from message 30005
  PlayOrPause,
  RealTime,
  TenTimes,
  SixtyTimes,
  FullSpeed,
  StartAgain,
  NewLogin,
  RefreshBooks,
  MarketWatch,
  Properties,
  Messages,
  Keys,
  About,
};

struct CommandRow {
  enum class Form : std::uint8_t { Plain, Check, Radio };
  TerminalCommand Command;
  const wchar_t* Menu;  // rows of one menu stand together
  const wchar_t* Text;
  KeyPress Key;
  Form Kind;
  bool BeginsGroup;  // a line stands before it
  const wchar_t* Help;
};

std::span<const CommandRow> CommandRows();
// The plug-in's menu stands before the one of this title.
inline constexpr const wchar_t* kMenuBehindPlugin = L"&Day";
