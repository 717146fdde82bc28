#include "terminal/file_bytes.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "terminal/terminal_error.h"

namespace {
constexpr std::size_t kReadSize = std::size_t{1} << 20;
}

CFileBytes::CFileBytes(std::filesystem::path path) : FilePath(std::move(path)) {
  errno = 0;
  Stream.open(FilePath, std::ios::binary);
  if (!Stream) ThrowFileError(FilePath, "cannot be opened", errno);
}

std::string_view CFileBytes::Peek(std::size_t wanted) {
  while (Filled - Begin < wanted && Stream.good()) Fill();
  return {Block.data() + Begin, Filled - Begin};
}

void CFileBytes::Fill() {
  std::copy(Block.data() + Begin, Block.data() + Filled, Block.data());
  FileOffset += Begin;
  Filled -= Begin;
  Begin = 0;
  if (Block.size() < Filled + kReadSize) Block.resize(Filled + kReadSize);
  errno = 0;
  Stream.read(Block.data() + Filled, static_cast<std::streamsize>(kReadSize));
  if (Stream.bad()) ThrowFileError(FilePath, "cannot be read", errno);
  Filled += static_cast<std::size_t>(Stream.gcount());
}
