// The block of bytes that zlib writes a message body to, and the loop that grows it. Neither throws.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

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
