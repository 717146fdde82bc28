#include "book_windows/plugin_state.h"

#include <system_error>

namespace {

std::filesystem::path CurrentFolder() {
  std::error_code ignored;
  return std::filesystem::current_path(ignored);
}

}  // namespace

PluginState::PluginState(CQORTradeImpl& decoder)
    : WorkingFolder(CurrentFolder()), TradeStore(decoder, BooksByKey, WorkingFolder) {}
