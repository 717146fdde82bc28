#include "book_windows/model/plugin_state.h"

#include "foundations/paths.h"

PluginState::PluginState(CQORTradeImpl& decoder)
    : WorkingFolder(CurrentFolder()), TradeStore(decoder, BooksByKey, WorkingFolder) {}
