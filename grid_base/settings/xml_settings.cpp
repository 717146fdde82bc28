#include "grid_base/settings/xml_settings.h"

#include <fstream>

#include "foundations/error_report.h"
#include "foundations/text_tools.h"
#include "grid_base/settings/settings_text.h"
#include "grid_base/settings/settings_tree.h"
#include "platform/faults.h"

namespace {

constexpr std::uint16_t kNewClass = 0xFFFF;
constexpr std::uint16_t kPointWords = 5;

std::wstring HexadecimalText(std::span<const std::uint8_t> bytes) {
  constexpr wchar_t kDigits[] = L"0123456789abcdef";
  std::wstring text;
  text.reserve(2 * bytes.size());
  for (const std::uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

int DigitOf(wchar_t character) {
  if (character >= L'0' && character <= L'9') return character - L'0';
  if (character >= L'a' && character <= L'f') return character - L'a' + 10;
  if (character >= L'A' && character <= L'F') return character - L'A' + 10;
  return -1;
}

// A pair of characters as sscanf reads a hexadecimal number: a blank or a sign may precede the digit, and the number
// ends at the first other character. A pair without a digit is 0.
std::uint8_t ByteOf(wchar_t first, wchar_t second) {
  const int high = DigitOf(first);
  const int low = DigitOf(second);
  if (high >= 0) return static_cast<std::uint8_t>(low < 0 ? high : high * 16 + low);
  const bool passedOver = first == L'+' || first == L' ' || (first >= L'\t' && first <= L'\r');
  if (low < 0 || !(passedOver || first == L'-')) return 0;
  return static_cast<std::uint8_t>(first == L'-' ? -low : low);
}

}  // namespace

CVELDPXMLSettings::CVELDPXMLSettings(std::shared_ptr<SettingsTree> tree) : Tree(std::move(tree)) {
  Tree->AddOpenPlace(&Current);
}
CVELDPXMLSettings::~CVELDPXMLSettings() {
  Tree->RemoveOpenPlace(&Current);
}

bool CVELDPXMLSettings::CreatePath(const std::wstring& path) {
  if (ReadOnly != 0) return false;
  CVELDPXMLNode* node = &SelectRoot(Administrator != 0);
  for (const std::wstring& part : PathParts(path)) {
    CVELDPXMLNode* child = node->FindChild(part);
    if (child == nullptr) {
      child = node->AppendChild(part);
      Tree->Changed = true;
    }
    node = child;
  }
  Current = node;
  return true;
}

bool CVELDPXMLSettings::OpenPath(const std::wstring& path) {
  LastPath = path;
  Current = FindPath(SelectRoot(Administrator != 0), path);
  return Current != nullptr;
}

// Intentional: also removes from read-only settings.
bool CVELDPXMLSettings::RemoveValue(const std::wstring& key) {
  const CVELDPXMLNode* child = Current == nullptr ? nullptr : Current->FindChild(key);
  if (child == nullptr) return false;
  Tree->RemoveNode(*child);
  return true;
}

bool CVELDPXMLSettings::RemovePath(const std::wstring& path, bool administrator) {
  if (ReadOnly != 0) return false;
  const CVELDPXMLNode* node = FindPath(SelectRoot(administrator), path);
  if (node == nullptr || node->ParentNode() == nullptr) return false;
  Tree->RemoveNode(*node);
  return true;
}

// Intentional: empties the old file before it writes the new text. RegistryStore keeps the old file until the new one
// is whole.
bool CVELDPXMLSettings::SaveToFile(const std::filesystem::path& path) const {
  const std::string bytes = SettingsFileBytes(Tree->User);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file.is_open()) return true;
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file.good()) CQORLog::ReportFailure("The file was not written. ", LastSystemError(), "SaveToFile", __LINE__);
  return file.good();
}

bool CVELDPXMLSettings::LoadFromFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file.is_open()) return false;
  const std::optional<std::wstring> text = JoinedLines(file);
  if (!text) {
    CQORLog::ReportFailure("The file was not read. ", LastSystemError(), "LoadFromFile", __LINE__);
    return false;
  }
  Tree->CloseBelow(Tree->User);
  Tree->Changed = true;
  return ParseNode(Tree->User, *text);
}

// Values: text, decimal numbers, and bytes as hexadecimal text.

const std::wstring* CVELDPXMLSettings::ValueOf(const std::wstring& key) const {
  const CVELDPXMLNode* child = Current == nullptr ? nullptr : Current->FindChild(StoredName(key));
  return child == nullptr ? nullptr : &child->Value;
}

// A child that is a branch stays one; a file does not have its value.
bool CVELDPXMLSettings::SetValue(const std::wstring& key, std::wstring value) {
  if (ReadOnly != 0 || Current == nullptr) return false;
  CVELDPXMLNode* child = Current->FindChild(StoredName(key));
  const bool isNew = child == nullptr;
  if (isNew) child = Current->AppendChild(StoredName(key));
  if (isNew || child->Value != value) Tree->Changed = true;
  child->Value = std::move(value);
  return true;
}

std::optional<std::vector<std::uint8_t>> CVELDPXMLSettings::BytesOf(const std::wstring& key) const {
  const std::wstring* text = ValueOf(key);
  if (text == nullptr || text->size() % 2 != 0) return std::nullopt;
  std::vector<std::uint8_t> bytes;
  bytes.reserve(text->size() / 2);
  for (std::size_t at = 0; at < text->size(); at += 2) bytes.push_back(ByteOf((*text)[at], (*text)[at + 1]));
  return bytes;
}

bool CVELDPXMLSettings::WriteBytes(const std::wstring& key, std::span<const std::uint8_t> bytes) {
  return SetValue(key, HexadecimalText(bytes));
}

bool CVELDPXMLSettings::Write(const std::wstring& key, const SettingsObject* object) {
  ArchiveWriter archive;
  if (object == nullptr) {
    archive.Put(std::uint16_t{0});
  } else {
    archive.Put(kNewClass);
    archive.Put(object->Schema());
    archive.Put(static_cast<std::uint16_t>(object->ClassName().size()));
    archive.PutBytes(object->ClassName());
    object->Store(archive);
  }
  return WriteBytes(key, archive.Bytes());
}

bool CVELDPXMLSettings::Write(const std::wstring& key, const SettingsObject& object) {
  ArchiveWriter archive;
  object.Store(archive);
  return WriteBytes(key, archive.Bytes());
}

bool CVELDPXMLSettings::Write(const std::wstring& key, const std::uint8_t* bytes, std::uint32_t size) {
  return WriteBytes(key, {bytes, size});
}

bool CVELDPXMLSettings::Write(const std::wstring& key, const SettingsPoint& point) {
  ArchiveWriter archive;
  archive.Put(kPointWords);
  for (const std::int32_t word : {point.X, point.Y, 0, 0, 0}) archive.Put(word);
  return WriteBytes(key, archive.Bytes());
}

bool CVELDPXMLSettings::Write(const std::wstring& key, const SettingsRectangle& rectangle) {
  ArchiveWriter archive;
  archive.Put(rectangle);
  return WriteBytes(key, archive.Bytes());
}

bool CVELDPXMLSettings::Write(const std::wstring& key, const std::vector<std::uint16_t>& words) {
  ArchiveWriter archive;
  archive.Put(static_cast<std::uint32_t>(words.size()));
  for (const std::uint16_t word : words) archive.Put(word);
  return WriteBytes(key, archive.Bytes());
}

bool CVELDPXMLSettings::Write(const std::wstring& key, const std::wstring& text) {
  return SetValue(key, text);
}

// Unsigned numbers are written as signed ones too.
bool CVELDPXMLSettings::Write(const std::wstring& key, std::uint32_t number) {
  return SetValue(key, std::to_wstring(static_cast<std::int32_t>(number)));
}
bool CVELDPXMLSettings::Write(const std::wstring& key, std::int32_t number) {
  return SetValue(key, std::to_wstring(number));
}

bool CVELDPXMLSettings::Read(const std::wstring& key, std::unique_ptr<SettingsObject>& object) {
  const auto bytes = BytesOf(key);
  std::uint16_t mark = 0;
  std::uint16_t schema = 0;
  std::uint16_t length = 0;
  std::string className;
  ArchiveReader archive(bytes ? std::span<const std::uint8_t>(*bytes) : std::span<const std::uint8_t>());
  if (!bytes || !archive.Take(mark)) return false;
  if (mark == 0) {
    object = nullptr;
    return true;
  }
  if (mark != kNewClass || !archive.Take(schema) || !archive.Take(length) || !archive.TakeBytes(length, className))
    return false;
  const auto maker = Makers.find(className);
  if (maker == Makers.end()) return false;
  std::unique_ptr<SettingsObject> made = maker->second();
  if (made->Schema() != schema || !made->Load(archive)) return false;
  object = std::move(made);
  return true;
}

bool CVELDPXMLSettings::Read(const std::wstring& key, SettingsObject& object) {
  const auto bytes = BytesOf(key);
  if (!bytes) return false;
  ArchiveReader archive(*bytes);
  return object.Load(archive);
}

bool CVELDPXMLSettings::Read(const std::wstring& key, std::vector<std::uint8_t>& bytes) {
  auto value = BytesOf(key);
  if (!value) return false;
  bytes = std::move(*value);
  return true;
}

bool CVELDPXMLSettings::Read(const std::wstring& key, SettingsRectangle& rectangle) {
  const auto bytes = BytesOf(key);
  return bytes && ArchiveReader(*bytes).Take(rectangle);
}

bool CVELDPXMLSettings::Read(const std::wstring& key, SettingsPoint& point) {
  const auto bytes = BytesOf(key);
  std::uint16_t count = 0;
  if (!bytes) return false;
  ArchiveReader archive(*bytes);
  return archive.Take(count) && count >= 2 && archive.Left() >= count * sizeof(std::uint32_t) && archive.Take(point);
}

// Intentional: a missing key leaves the array empty.
bool CVELDPXMLSettings::Read(const std::wstring& key, std::vector<std::uint16_t>& words) {
  words.clear();
  const auto bytes = BytesOf(key);
  std::uint32_t count = 0;
  if (!bytes) return false;
  ArchiveReader archive(*bytes);
  if (!archive.Take(count) || archive.Left() / sizeof(std::uint16_t) < count) return false;
  words.resize(count);
  for (std::uint16_t& word : words) archive.Take(word);
  return true;
}

bool CVELDPXMLSettings::Read(const std::wstring& key, std::wstring& text) {
  const std::wstring* value = ValueOf(key);
  if (value == nullptr) return false;
  text = *value;
  return true;
}

bool CVELDPXMLSettings::Read(const std::wstring& key, std::uint32_t& number) {
  const std::wstring* value = ValueOf(key);
  if (value == nullptr) return false;
  number = static_cast<std::uint32_t>(WideToNumber(*value));
  return true;
}

bool CVELDPXMLSettings::Read(const std::wstring& key, std::int32_t& number) {
  const std::wstring* value = ValueOf(key);
  if (value == nullptr) return false;
  number = WideToNumber(*value);
  return true;
}
