// The key "Key" in the process's holder for the life of the object.
#pragma once

#include "host_link/messages/body_coding.h"
#include "tests/support/wire_bytes.h"

struct CipherKeyForTest {
  CipherKeyForTest() { CipherKeyHolder = &kKey; }
  ~CipherKeyForTest() { CipherKeyHolder = nullptr; }
  static constexpr std::uint8_t kBytes[] = {'K', 'e', 'y'};
  static constexpr CipherKey kKey{kBytes, sizeof kBytes};
};

inline const Bytes kEncipheredNumber = Hex("C88D 502E A8");  // 10002 = 8111 under that key
