// What tests of the link share: a reply buffer, the cipher key "Key" and a trade.
#pragma once

#include "host_link/messages/body_coding.h"
#include "host_link/messages/reply_buffer.h"
#include "tests/support/wire_bytes.h"

// A HostReplyBuffer as a terminal makes it, with an end.
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

// The key in the process's holder for the life of the object.
struct CipherKeyForTest {
  CipherKeyForTest() { CipherKeyHolder = &kKey; }
  ~CipherKeyForTest() { CipherKeyHolder = nullptr; }
  static constexpr std::uint8_t kBytes[] = {'K', 'e', 'y'};
  static constexpr CipherKey kKey{kBytes, sizeof kBytes};
};
inline const Bytes kEncipheredNumber = Hex("C88D 502E A8");  // 10002 = 8111 under that key

// A trade of that id and execution: 20008, 55101, 55100, terminator, then its quantity 20014 and the price 45.25.
inline Bytes TradeFields(std::uint8_t id, std::uint8_t quantity) {
  return Hex("23 284E") + Word(id, 4) + Hex("23 3DD7 0200 'T'") + Word(id, 1) + Hex("23 3CD7 0200 'O1' 23 FFFF") +
         Hex("23 2E4E") + Word(quantity, 4) + Hex("23 429C 0000000000A04640");
}
