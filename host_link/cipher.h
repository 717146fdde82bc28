// The cipher of message bodies (RC4 as published) and the place where the embedding program puts its key.
// The key is set before the first message and not changed while messages are read or finished.
#pragma once

#include <cstdint>

struct CipherKey {
  const std::uint8_t* Bytes = nullptr;
  std::uint16_t Length = 0;
};

// The process's key, null where there is none. The plug-in never sets it: only the embedding program does.
extern const CipherKey* CipherKeyHolder;

// Enciphers or deciphers one message body in place, from a fresh key schedule: nothing is kept between messages.
// False, with the bytes untouched, when the length is 0 or the key is empty.
bool ApplyCipher(const CipherKey& key, std::uint8_t* bytes, std::uint32_t length) noexcept;
