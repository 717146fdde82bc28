#include "grid_ops/exports/export_file.h"

#include <algorithm>

namespace {
constexpr std::size_t kBlockSize = 256 * 1024;
}

ExportFile::ExportFile(const std::filesystem::path& path)
    : Stream(path, std::ios::binary | std::ios::trunc), Size(kBlockSize) {
  Block.Start(Size);
}

ExportFile::~ExportFile() {
  WriteBlock();
}

void ExportFile::MakeRoom(std::size_t characters) {
  WriteBlock();
  Size = std::max(Size, characters);
  Block.Start(Size);
}

void ExportFile::WriteBlock() {
  Stream.write(Block.Text().data(), static_cast<std::streamsize>(Block.Text().size()));
}
