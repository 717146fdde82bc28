#include "host_link/messages/message_header.h"

#include <array>
#include <numeric>
#include <utility>

const CipherKey* CipherKeyHolder = nullptr;

bool ApplyCipher(const CipherKey& key, std::uint8_t* bytes, std::uint32_t length) noexcept {
  if (length == 0 || key.Bytes == nullptr || key.Length == 0) return false;
  std::array<std::uint8_t, 256> state;
  std::iota(state.begin(), state.end(), std::uint8_t{0});
  std::uint8_t j = 0;
  for (unsigned i = 0; i < state.size(); ++i) {
    j = static_cast<std::uint8_t>(j + state[i] + key.Bytes[i % key.Length]);
    std::swap(state[i], state[j]);
  }
  std::uint8_t i = 0;
  j = 0;
  for (std::uint32_t at = 0; at < length; ++at) {
    i = static_cast<std::uint8_t>(i + 1);
    j = static_cast<std::uint8_t>(j + state[i]);
    std::swap(state[i], state[j]);
    bytes[at] = static_cast<std::uint8_t>(bytes[at] ^ state[static_cast<std::uint8_t>(state[i] + state[j])]);
  }
  return true;
}
