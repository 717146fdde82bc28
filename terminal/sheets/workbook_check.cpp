// The library does not look whether its temporary files took all that it wrote: on a full disk it would make a workbook
// with holes and report success. So the finished workbook is read once more: each part must be whole, and the sheet
// must have all its rows and cells.
#include <zlib.h>

#include <algorithm>
#include <iterator>
#include <new>

#include "terminal/sheets/sheet_cell.h"

namespace {

constexpr std::size_t kChunkSize = 1 << 18;
constexpr std::string_view kSheetPart = "xl/worksheets/sheet1.xml";

[[noreturn]] void ThrowIncomplete() {
  throw SheetError("the workbook came out incomplete, perhaps because the disk for temporary files is full");
}

// A number of the zip format, the low byte first.
std::uint32_t NumberAt(std::string_view bytes, std::size_t at, std::size_t size) {
  if (at > bytes.size() || bytes.size() - at < size) ThrowIncomplete();
  std::uint32_t number = 0;
  for (std::size_t i = size; i-- > 0;) number = (number << 8) | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

std::string_view BytesAt(std::string_view bytes, std::size_t at, std::size_t size) {
  if (at > bytes.size() || bytes.size() - at < size) ThrowIncomplete();
  return bytes.substr(at, size);
}

struct ZipPart {
  std::string_view Name;
  std::string_view Packed;
  std::uint32_t Checksum;
};

// The part that the directory has at that place, which moves behind it.
ZipPart TakePart(std::string_view zip, std::size_t& at) {
  if (NumberAt(zip, at, 4) != 0x02014B50) ThrowIncomplete();
  const std::size_t local = NumberAt(zip, at + 42, 4);
  const std::size_t begin = local + 30 + NumberAt(zip, local + 26, 2) + NumberAt(zip, local + 28, 2);
  const std::size_t nameSize = NumberAt(zip, at + 28, 2);
  const ZipPart part{BytesAt(zip, at + 46, nameSize), BytesAt(zip, begin, NumberAt(zip, at + 20, 4)),
                     NumberAt(zip, at + 16, 4)};
  at += 46 + nameSize + NumberAt(zip, at + 30, 2) + NumberAt(zip, at + 32, 2);
  return part;
}

// The bytes of a part in pieces, which are valid until the next call; empty at the end.
class Unpacking {
 public:
  explicit Unpacking(const ZipPart& part) : Checksum(part.Checksum) {
    if (inflateInit2(&Stream, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
    Stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(part.Packed.data()));
    Stream.avail_in = static_cast<uInt>(part.Packed.size());
  }
  ~Unpacking() { inflateEnd(&Stream); }
  Unpacking(const Unpacking&) = delete;
  Unpacking& operator=(const Unpacking&) = delete;

  std::string_view Next() {
    if (Result == Z_STREAM_END) return {};
    Stream.next_out = reinterpret_cast<Bytef*>(Chunk.data());
    Stream.avail_out = static_cast<uInt>(Chunk.size());
    Result = inflate(&Stream, Z_NO_FLUSH);
    const std::size_t size = Chunk.size() - Stream.avail_out;
    Counted = crc32(Counted, reinterpret_cast<const Bytef*>(Chunk.data()), static_cast<uInt>(size));
    if (Result != Z_OK && (Result != Z_STREAM_END || Counted != Checksum)) ThrowIncomplete();
    return {Chunk.data(), size};
  }

 private:
  z_stream Stream{};
  std::string Chunk = std::string(kChunkSize, '\0');
  int Result = Z_OK;
  uLong Counted = 0;
  uLong Checksum;
};

// Begin and end of an XML text that comes in pieces, and how often the tags of rows and cells stand in it.
class XmlCheck {
 public:
  void Read(std::string_view chunk) {
    Text += chunk;
    if (Root.empty()) ReadRoot();
    // The last tag may go on in the next piece.
    const std::size_t last = std::min(Text.rfind('<'), Text.size());
    for (std::size_t at = Text.find('<'); at < last; at = Text.find('<', at + 1)) Count(at + 1);
    Text.erase(0, last);
  }

  bool IsWhole() const { return !Root.empty() && Text.starts_with("</" + Root + ">"); }
  bool Has(std::uint64_t rows, std::uint64_t cells) const {
    return Opened[0] == rows && Closed[0] == rows && Opened[1] == cells && Closed[1] == cells;
  }

 private:
  static constexpr std::string_view kStart = "<?xml ";
  static constexpr std::string_view kTags[] = {"row ", "c "};
  static constexpr std::string_view kEndTags[] = {"/row>", "/c>"};

  void ReadRoot() {
    const std::size_t open = Text.find('<', kStart.size());
    if (!Text.starts_with(kStart) || open == std::string::npos) ThrowIncomplete();
    Root = Text.substr(open + 1, Text.find_first_of(" >", open) - open - 1);
  }

  void Count(std::size_t at) {
    for (std::size_t i = 0; i < std::size(kTags); ++i) {
      Opened[i] += Text.compare(at, kTags[i].size(), kTags[i]) == 0;
      Closed[i] += Text.compare(at, kEndTags[i].size(), kEndTags[i]) == 0;
    }
  }

  std::string Root;
  std::string Text;  // what has not been counted
  std::uint64_t Opened[2] = {};
  std::uint64_t Closed[2] = {};
};

}  // namespace

void CheckWorkbook(std::string_view bytes, std::uint64_t rows, std::uint64_t cells) {
  constexpr std::size_t kEndSize = 22;
  if (bytes.size() < kEndSize || NumberAt(bytes, bytes.size() - kEndSize, 4) != 0x06054B50) ThrowIncomplete();
  const std::size_t end = bytes.size() - kEndSize;
  bool hasSheet = false;
  std::size_t at = NumberAt(bytes, end + 16, 4);
  for (std::uint32_t parts = NumberAt(bytes, end + 10, 2); parts > 0; --parts) {
    const ZipPart part = TakePart(bytes, at);
    XmlCheck xml;
    Unpacking unpacking(part);
    for (auto chunk = unpacking.Next(); !chunk.empty(); chunk = unpacking.Next()) xml.Read(chunk);
    const bool isSheet = part.Name == kSheetPart;
    if (!xml.IsWhole() || (isSheet && !xml.Has(rows, cells))) ThrowIncomplete();
    hasSheet = hasSheet || isSheet;
  }
  if (!hasSheet) ThrowIncomplete();
}
