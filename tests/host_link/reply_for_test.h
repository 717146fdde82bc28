// A HostReplyBuffer as a terminal makes it, with an end.
#pragma once

#include "host_link/messages/reply_buffer.h"
#include "tests/support/wire_bytes.h"

class ReplyForTest {
 public:
  ReplyForTest(std::uint32_t capacity, bool growable)
      : Buffer{new std::uint8_t[capacity], 0, 0, capacity, growable ? 1U : 0U, {}} {
    InitializeLock(Buffer.Lock, 4000);
  }
  ~ReplyForTest() {
    DestroyLock(Buffer.Lock);
    delete[] Buffer.Data;
  }
  ReplyForTest(const ReplyForTest&) = delete;
  ReplyForTest& operator=(const ReplyForTest&) = delete;

  Bytes Content() const { return Bytes(Buffer.Data, Buffer.Data + Buffer.Used); }

  HostReplyBuffer Buffer;
};
