// A session of the gateway, from its start to the signal that ends it: the drop copy, the thread that fills the logs
// and the report.
#pragma once

#include <iosfwd>

#include "gateway/options.h"

// Runs until SIGTERM, SIGINT or SIGHUP; a second one ends the process at once. Call it before there are other threads,
// which must not take the signals. Throws GatewayError and FeedError.
void RunSession(const GatewayOptions& options, std::ostream& errors);
