#include "terminal/plugin_start.h"

std::uint64_t SendStart(CPluginLink& plugin, bool withWindows) {
  std::uint64_t sent = plugin.Send(30025) ? 1 : 0;
  if (withWindows) {
    plugin.SendRestore();
    ++sent;
  }
  sent += plugin.Send(30022) ? 1 : 0;
  return sent;
}
