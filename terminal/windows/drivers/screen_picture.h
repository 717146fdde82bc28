// A picture of the frame and its floating bars as they stand on the screen, as a PNG file, and a line of what the
// program holds.
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

#include "toolkit/bars/docking_manager.h"

// Rows from the top down, each of width times red, green, blue; rgb holds width * height * 3 bytes. Empty for a picture
// without pixels.
std::string PngBytes(std::uint32_t width, std::uint32_t height, std::span<const std::uint8_t> rgb);

// Throws TerminalError.
void WritePngFile(const std::filesystem::path& file, std::uint32_t width, std::uint32_t height,
                  std::span<const std::uint8_t> rgb);

// Writes a PNG file of the smallest rectangle around all windows. Windows of other programs are not left out. Throws
// TerminalError.
void SavePicture(CQORPFrame& frame, const std::filesystem::path& file);

// Appends "name,heap bytes,handles,windows,open books" to the file, in a new file after a line of titles. Counts all
// windows of the program, children included. Returns why it failed, else an empty text.
std::string AppendUsage(const std::filesystem::path& file, const std::string& name, std::size_t openBooks);
