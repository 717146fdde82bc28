#include "terminal/common/png_file.h"

#include <zlib.h>

#include <cerrno>
#include <fstream>
#include <new>

#include "terminal/common/errors.h"

namespace {

constexpr std::size_t kPixelSize = 3;
constexpr char kSameAsAbove = 2;  // the filter that stores the difference to the row above

void AppendWord(std::string& bytes, std::uint32_t word) {
  for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(word >> shift & 0xFF);
}

void AppendChunk(std::string& file, const char* type, const std::string& data) {
  AppendWord(file, static_cast<std::uint32_t>(data.size()));
  const std::string summed = type + data;
  const uLong sum = crc32_z(0, reinterpret_cast<const Bytef*>(summed.data()), summed.size());
  file += summed;
  AppendWord(file, static_cast<std::uint32_t>(sum));
}

// Most rows of a window equal the one above: their differences are zeros.
std::string FilteredRows(std::size_t rowSize, std::span<const std::uint8_t> rgb) {
  std::string rows;
  rows.reserve(rgb.size() + rgb.size() / rowSize);
  for (std::size_t row = 0; row < rgb.size(); row += rowSize) {
    rows += row == 0 ? '\0' : kSameAsAbove;
    for (std::size_t at = row; at < row + rowSize; ++at)
      rows += static_cast<char>(rgb[at] - (row == 0 ? 0 : rgb[at - rowSize]));
  }
  return rows;
}

std::string Deflated(const std::string& bytes) {
  uLongf size = compressBound(static_cast<uLong>(bytes.size()));
  std::string packed(size, '\0');
  if (compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
               static_cast<uLong>(bytes.size())) != Z_OK)
    throw std::bad_alloc();
  packed.resize(size);
  return packed;
}

}  // namespace

std::string PngBytes(std::uint32_t width, std::uint32_t height, std::span<const std::uint8_t> rgb) {
  const std::size_t rowSize = width * kPixelSize;
  if (rowSize == 0 || height == 0 || rgb.size() != rowSize * height) return {};
  std::string head;
  AppendWord(head, width);
  AppendWord(head, height);
  head += {8, 2, 0, 0, 0};
  std::string file = "\x89PNG\r\n\x1A\n";
  AppendChunk(file, "IHDR", head);
  AppendChunk(file, "IDAT", Deflated(FilteredRows(rowSize, rgb)));
  AppendChunk(file, "IEND", {});
  return file;
}

void WritePngFile(const std::filesystem::path& file, std::uint32_t width, std::uint32_t height,
                  std::span<const std::uint8_t> rgb) {
  const std::string bytes = PngBytes(width, height, rgb);
  if (bytes.empty()) throw TerminalError(ExitCode::File, PathText(file) + ": there is no picture to be written");
  errno = 0;
  std::ofstream stream(file, std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream) ThrowFileError(file, "cannot be written", errno);
}
