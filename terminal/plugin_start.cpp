#include "terminal/plugin_start.h"

std::uint64_t SendStart(CPluginLink& plugin) {
  std::uint64_t sent = 1;
  sent += plugin.Send(30025) ? 1 : 0;
  plugin.SendRestore();
  sent += plugin.Send(30022) ? 1 : 0;
  return sent;
}
