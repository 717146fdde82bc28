#include "terminal/windows/frame/log_grid.h"

LogGrid::LogGrid(MessageLog& log)
    : ListGrid(log, {.Name = L"Messages",
                     .FileName = "messages",
                     .Order = ListOrder::NewestFirst,
                     .FilterShown = true,
                     .Empty = L"No messages yet"}),
      Log(log) {}

std::span<const CQORPMenuItem> LogGrid::ContextMenu() const {
  constexpr int kClear = kFirstOwnCommand;
  static constexpr CQORPMenuItem kMenu[] = {
      kListMenu[0], kListMenu[1], kListMenu[2],
      kListMenu[3], kListMenu[4], {CQORPMenuItem::Kind::Command, 0, kClear, L"C&lear"},
  };
  return kMenu;
}

void LogGrid::RunOwnCommand(int) {
  Log.Clear();
  ShowChanges();
}
