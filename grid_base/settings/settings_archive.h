// Settings values other than text and numbers, as little-endian bytes, and objects that write themselves.
//
//   object by pointer   := u16 0 | u16 0xFFFF u16 schema u16 length class-name object
//   object by reference := what its Store writes
//   point               := u16 5 u32 x u32 y u32 0 u32 0 u32 0
//   rectangle           := i32 left i32 top i32 right i32 bottom
//   words               := u32 count u16*
#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "foundations/byte_words.h"

class ArchiveWriter {
 public:
  template <typename Word>
  void Put(Word word) {
    PutBytes({reinterpret_cast<const char*>(&word), sizeof word});
  }
  void PutBytes(std::string_view bytes) {
    const std::size_t end = Content.size();
    Content.resize(end + bytes.size());
    std::memcpy(Content.data() + end, bytes.data(), bytes.size());
  }
  const std::vector<std::uint8_t>& Bytes() const noexcept { return Content; }

 private:
  std::vector<std::uint8_t> Content;
};

class ArchiveReader {
 public:
  explicit ArchiveReader(std::span<const std::uint8_t> bytes) noexcept : Rest(bytes) {}
  // Each returns false, with the output unchanged, if too few bytes are left.
  template <typename Word>
  bool Take(Word& word) noexcept {
    if (Rest.size() < sizeof word) return false;
    word = LoadValue<Word>(Rest.data());
    Rest = Rest.subspan(sizeof word);
    return true;
  }
  bool TakeBytes(std::size_t count, std::string& bytes) {
    if (Rest.size() < count) return false;
    bytes.assign(reinterpret_cast<const char*>(Rest.data()), count);
    Rest = Rest.subspan(count);
    return true;
  }
  std::size_t Left() const noexcept { return Rest.size(); }

 private:
  std::span<const std::uint8_t> Rest;
};

// An object that can be a settings value.
class SettingsObject {
 public:
  virtual ~SettingsObject() = default;
  // Names the class of a value that is stored through a pointer.
  virtual std::string_view ClassName() const = 0;
  virtual std::uint16_t Schema() const { return 1; }
  virtual void Store(ArchiveWriter& archive) const = 0;
  // False if the bytes are not such an object.
  virtual bool Load(ArchiveReader& archive) = 0;
};
