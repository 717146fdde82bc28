// The system's own text for the number of a failed call. Any thread may call.
#pragma once

#include <string>

// In one line; empty if the system has none.
std::string SystemErrorText(unsigned long errorNumber);
