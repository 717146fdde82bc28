// The grid of the message log.
#pragma once

#include "terminal/link/message_log.h"
#include "terminal/windows/frame/list_grid.h"

// Shows the message log, the newest on top; its menu clears the log too.
class LogGrid : public ListGrid {
 public:
  explicit LogGrid(MessageLog& log);
  std::span<const CQORPMenuItem> ContextMenu() const override;

 private:
  void RunOwnCommand(int id) override;

  MessageLog& Log;
};
