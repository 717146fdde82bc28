// Puts a key into the process's holder for the life of the object.
#pragma once

#include "host_link/messages/body_coding.h"
#include "tests/support/wire_bytes.h"

class CipherKeyForTest {
 public:
  explicit CipherKeyForTest(Bytes bytes)
      : KeyBytes(std::move(bytes)), Key{KeyBytes.data(), static_cast<std::uint16_t>(KeyBytes.size())} {
    CipherKeyHolder = &Key;
  }
  ~CipherKeyForTest() { CipherKeyHolder = nullptr; }
  CipherKeyForTest(const CipherKeyForTest&) = delete;
  CipherKeyForTest& operator=(const CipherKeyForTest&) = delete;

 private:
  Bytes KeyBytes;
  CipherKey Key;
};
