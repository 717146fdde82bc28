// What the modes of a message do to its body: the cipher, and the loop that runs zlib. Nothing here throws.
#pragma once

#include <zlib.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <numeric>
#include <utility>

// The cipher of message bodies: RC4 as published. The key is set before the first message and does not change while
// messages are read or finished.
struct CipherKey {
  const std::uint8_t* Bytes = nullptr;
  std::uint16_t Length = 0;
};

// The process's key, null for none; only the embedding program sets it.
inline const CipherKey* CipherKeyHolder = nullptr;

// Enciphers or deciphers one message body in place with a fresh key schedule. False, with nothing changed, if the
// length is 0 or the key is empty.
inline bool ApplyCipher(const CipherKey& key, std::uint8_t* bytes, std::uint32_t length) noexcept {
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

// The block of bytes that zlib writes a message body to, and the loop that grows it.
struct ZlibBlock {
  explicit ZlibBlock(std::uint32_t size) noexcept : Bytes(new (std::nothrow) std::uint8_t[size]()), Size(size) {}

  // Adds that many bytes at the end and lets the stream write there. False, with nothing changed, without memory.
  bool Grow(std::uint32_t step, z_stream& stream) noexcept {
    ZlibBlock larger(Size + step);
    if (larger.Bytes == nullptr) return false;
    std::memcpy(larger.Bytes.get(), Bytes.get(), Size);
    stream.next_out = larger.Bytes.get() + Size;
    stream.avail_out = step;
    *this = std::move(larger);
    return true;
  }

  // Runs inflate or deflate from the given offset until the stream ends, growing by the step whenever the block is full
  // and not yet larger than the limit. False if the stream does not end so; the block keeps what was written.
  bool Run(int (*run)(z_stream*, int), z_stream& stream, std::uint32_t offset, std::uint32_t step,
           std::uint32_t limit) noexcept {
    stream.next_out = Bytes.get() + offset;
    stream.avail_out = Size - offset;
    int result = run(&stream, Z_FINISH);
    while (result == Z_OK || result == Z_BUF_ERROR) {
      if (stream.avail_out != 0 || Size > limit || !Grow(step, stream)) return false;
      result = run(&stream, Z_FINISH);
    }
    return result == Z_STREAM_END;
  }

  std::unique_ptr<std::uint8_t[]> Bytes;  // null without memory
  std::uint32_t Size;
};
