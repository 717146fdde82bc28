// Window messages that programs agree on by name. Any thread may call.
#pragma once

// The number of the window message of that name; 0 on a platform without window messages.
unsigned RegisterNamedMessage(const char* name) noexcept;
