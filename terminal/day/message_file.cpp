#include "terminal/day/message_file.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <limits>
#include <string>
#include <utility>

#include "foundations/byte_words.h"
#include "host_link/messages/message_header.h"
#include "host_link/messages/packet_writer.h"
#include "platform/faults.h"
#include "terminal/common/errors.h"

namespace {

constexpr std::size_t kLargestMessage = std::numeric_limits<std::uint16_t>::max();
// The largest message and the header after it.
constexpr std::size_t kWindowSize = kLargestMessage + kHeaderSize;

std::uint16_t WordAt(std::string_view bytes, std::size_t place) noexcept {
  return LoadValue<std::uint16_t>(bytes.data() + place);
}

bool IsHeader(std::string_view bytes) noexcept {
  return bytes.size() >= kHeaderSize && bytes[0] == char{kFieldMark} &&
         WordAt(bytes, kProtocolOffset) == kProtocolWord && bytes[kSecondMarkOffset] == char{kFieldMark} &&
         WordAt(bytes, kLengthTagOffset) == kLengthTag;
}

bool IsKnownMode(std::uint16_t mode) noexcept {
  return mode == kModePlain || mode == kModeCompressed || mode == kModeEnciphered || mode == kModeEncipheredByReader;
}

// The offset of the next header inside a message of that size if no header follows it; else the size.
std::size_t HeaderInside(std::string_view window, std::size_t size) noexcept {
  const std::string_view behind = window.substr(size);
  if (behind.empty() || IsHeader(behind)) return size;
  return std::min(FindMessageHeader(window.substr(0, size + kHeaderSize - 1), 1), size);
}

}  // namespace

std::size_t FindMessageHeader(std::string_view bytes, std::size_t from) noexcept {
  for (std::size_t at = bytes.find(char{kFieldMark}, from); at != std::string_view::npos;
       at = bytes.find(char{kFieldMark}, at + 1))
    if (IsHeader(bytes.substr(at))) return at;
  return std::string_view::npos;
}

MessageFile::MessageFile(std::filesystem::path path, BadLineReport& badLines)
    : Bytes(std::move(path)), BadLines(badLines) {}

bool MessageFile::Next(RawMessage& frame) {
  while (FindHeader()) {
    if (!TakeFrame()) continue;
    frame = Frame;
    return true;
  }
  return false;
}

// Drops the bytes before the next header; false at the end of the file.
bool MessageFile::FindHeader() {
  for (;;) {
    const std::string_view window = Bytes.Peek(kWindowSize);
    const std::size_t at = FindMessageHeader(window, 0);
    const bool found = at != std::string_view::npos;
    const bool isLast = window.size() < kWindowSize;
    // A header may begin in the last bytes of a window.
    const std::size_t garbage = found ? at : isLast ? window.size() : window.size() - (kHeaderSize - 1);
    GarbageSize += garbage;
    Bytes.Drop(garbage);
    if (!found && !isLast) continue;
    ReportGarbage();
    return found;
  }
}

void MessageFile::ReportGarbage() {
  if (GarbageSize != 0 && !GarbageTold)
    BadLines.AtByte(Bytes.Path(), Bytes.Offset() - GarbageSize,
                    WithThousands(GarbageSize) + " bytes that belong to no message");
  GarbageSize = 0;
  GarbageTold = false;
}

// Requires: the window stands at a header. False if its message was refused.
bool MessageFile::TakeFrame() {
  const std::string_view window = Bytes.Peek(kWindowSize);
  const std::size_t size = std::size_t{WordAt(window, kLengthOffset)} + kHeaderSize;
  Frame.Offset = Bytes.Offset();
  if (size > kLargestMessage) {
    RefuseFrame("the header asks for " + WithThousands(size) + " bytes, more than a message can have", 1);
    return false;
  }
  if (size > window.size()) {
    RefuseFrame("the message is cut after " + WithThousands(window.size()) + " of " + WithThousands(size) + " bytes",
                1);
    return false;
  }
  if (const std::size_t cut = HeaderInside(window, size); cut < size) {
    RefuseFrame("the message is cut after " + WithThousands(cut) + " of " + WithThousands(size) + " bytes", cut);
    return false;
  }
  if (const std::uint16_t mode = WordAt(window, kModeOffset); !IsKnownMode(mode)) {
    RefuseFrame("the message has the unknown mode " + std::to_string(mode), size);
    return false;
  }
  Copy.assign(window.begin(), window.begin() + static_cast<std::ptrdiff_t>(size));
  Frame.Data = Copy.data();
  Frame.Size = static_cast<std::uint16_t>(size);
  Bytes.Drop(size);
  return true;
}

void MessageFile::RefuseFrame(const std::string& reason, std::size_t size) {
  Report(reason);
  Bytes.Drop(size);
  GarbageTold = size == 1;
}

namespace {
constexpr std::size_t kReadSize = std::size_t{1} << 20;
}

FileBytes::FileBytes(std::filesystem::path path) : FilePath(std::move(path)) {
  errno = 0;
  Stream.open(FilePath, std::ios::binary);
  if (!Stream) ThrowFileError(FilePath, "cannot be opened", errno);
}

std::string_view FileBytes::Peek(std::size_t wanted) {
  while (Filled - Begin < wanted && Stream.good()) Fill();
  return {Block.data() + Begin, Filled - Begin};
}

void FileBytes::Fill() {
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

// The body is copied as one counted field. The field of the number, which is first in every body and as long as the
// head of a counted field, then overwrites that head.
bool CopyMessage(const CQORPacketReader& message, CQORPacketWriter& writer) {
  constexpr std::uint16_t kNumberFieldSize = 5;
  const std::uint8_t* body = message.Data + message.Cursor - kNumberFieldSize;
  if (!writer.AddBytes(10002, message.Data + message.Cursor, static_cast<std::uint16_t>(message.End - message.Cursor)))
    return false;
  std::memcpy(writer.Buffer + kHeaderSize, body, kNumberFieldSize);
  writer.Finish();
  return writer.GetSize() != 0;
}

MessageRecorder::MessageRecorder(std::filesystem::path path, std::uint16_t mode)
    : FilePath(std::move(path)), Mode(mode) {
  errno = 0;
  Stream.open(FilePath, std::ios::binary | std::ios::trunc);
  if (!Stream) ThrowFileError(FilePath, "cannot be written", errno);
}

bool MessageRecorder::Write(const CQORPacketReader& message) {
  CQORPacketWriter writer(Mode);
  if (!CopyMessage(message, writer)) return false;
  errno = 0;
  Stream.write(reinterpret_cast<const char*>(writer.GetData()), writer.GetSize());
  if (!Stream) ThrowFileError(FilePath, "cannot be written", errno);
  return true;
}

void MessageRecorder::Close() {
  errno = 0;
  Stream.close();
  if (!Stream) ThrowFileError(FilePath, "cannot be written", errno);
}

namespace {

// Intentional: empties the file instead of replacing it; links to it stay valid.
void EmptyFile(const std::filesystem::path& file) {
  std::error_code error;
  if (std::filesystem::is_regular_file(file, error)) std::filesystem::resize_file(file, 0, error);
  if (error && error != std::errc::no_such_file_or_directory) ThrowFileError(file, "cannot be written", error);
}

}  // namespace

bool IsRecordFile(const std::filesystem::path& file) {
  std::string extension = PathText(file.extension());
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension == ".ada";
}

TradeRecorder::TradeRecorder(std::filesystem::path path, std::uint16_t mode) : FilePath(std::move(path)), Mode(mode) {
  EmptyFile(FilePath);
  Trades.SetName(FilePath.parent_path(), FilePath.stem(), FilePath.extension());
  if (const std::error_code error = Trades.Open(); error) ThrowFileError(FilePath, "cannot be written", error);
  Writer = std::make_unique<QOR::Base::CQORADAWriteAsync>(Trades, Trades.BufferStore());
  Trades.SetWriterHandle(Writer.get());
}

bool TradeRecorder::Write(CQORPacketReader& message) {
  const std::uint16_t number = message.MessageNumber;
  if (number != 8111 && number != 9101) return false;
  TradeRecord record{};
  Trades.DecodeMessage(message, record);
  if (!Trades.SaveRecord(record, number, Mode)) ThrowFailure();
  return true;
}

void TradeRecorder::Close() {
  if (!Writer->Close()) ThrowFailure();
  if (!Trades.Close())
    ThrowFileError(FilePath, "cannot be written",
                   std::error_code(static_cast<int>(LastSystemError()), std::system_category()));
}

void TradeRecorder::ThrowFailure() {
  Writer->Close();
  ThrowFileError(FilePath, "cannot be written",
                 std::error_code(static_cast<int>(Writer->Error()), std::system_category()));
}
