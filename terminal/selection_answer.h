// The answer to message 32022, the question what is selected in a window: message 32023 with an exchange and a
// security. Not who is asked. The calling thread only.
#pragma once

#include <string>

#include "host_link/entry_points.h"
#include "terminal/message_log.h"

// Calls the function with the answer; nothing selected, which an empty text stands for, answers with the number alone.
void AnswerSelection(MessageFunction answer, const std::string& exchange, const std::string& securityId,
                     CMessageLog& log);
