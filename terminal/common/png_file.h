// Pictures as PNG files.
//
//   file  := 89 50 4E 47 0D 0A 1A 0A chunk(IHDR) chunk(IDAT) chunk(IEND)       (W3C Portable Network Graphics, 2nd ed.)
//   chunk := u32 length, type[4], data[length], u32 CRC-32 of type and data    (words with the high byte first)
//   IHDR  := u32 width, u32 height, 8 bits, colour type 2, 0, 0, 0
//   IDAT  := zlib stream of rows, each behind one byte of filter, 0 or 2
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

// Rows from the top down, each of width times red, green, blue; rgb holds width * height * 3 bytes. Empty for a picture
// without pixels.
std::string PngBytes(std::uint32_t width, std::uint32_t height, std::span<const std::uint8_t> rgb);

// Throws TerminalError.
void WritePngFile(const std::filesystem::path& file, std::uint32_t width, std::uint32_t height,
                  std::span<const std::uint8_t> rgb);
