// MessageTarget: where the messages of a day go. One thread.
#pragma once

#include "host_link/packet_reader.h"
#include "terminal/message_file.h"

class MessageTarget {
 public:
  virtual ~MessageTarget() = default;
  // The same message twice: with its header parsed, and raw. False when the target does not take its number.
  virtual bool Deliver(CQORPacketReader& message, const WireFrame& raw) = 0;
  // Delivers a message that holds nothing but its number.
  bool Send(std::uint16_t number);
};
