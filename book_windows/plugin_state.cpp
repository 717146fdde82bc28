#include "book_windows/plugin_state.h"

#include "foundations/paths.h"

PluginState::PluginState(CQORTradeImpl& decoder)
    : WorkingFolder(CurrentFolder()), TradeStore(decoder, BooksByKey, WorkingFolder) {}
