#include "grid_base/xml_settings.h"

#include <fstream>

#include "foundations/wide_text.h"
#include "grid_base/settings_path.h"
#include "grid_base/settings_text.h"

bool CVELDPXMLSettings::CreatePath(const std::wstring& path) {
  if (ReadOnly != 0) return false;
  CVELDPXMLNode* node = &SelectRoot(Administrator != 0);
  for (const std::wstring& part : PathParts(path)) {
    CVELDPXMLNode* child = node->FindChild(part);
    node = child != nullptr ? child : node->AppendChild(part);
  }
  Current = node;
  return true;
}

bool CVELDPXMLSettings::OpenPath(const std::wstring& path) {
  LastPath = path;
  Current = FindPath(SelectRoot(Administrator != 0), path);
  return Current != nullptr;
}

bool CVELDPXMLSettings::RemoveValue(const std::wstring& key) {
  const CVELDPXMLNode* child = Current == nullptr ? nullptr : Current->FindChild(key);
  if (child == nullptr) return false;
  Current->RemoveChild(child);
  return true;
}

bool CVELDPXMLSettings::RemovePath(const std::wstring& path, bool administrator) {
  if (ReadOnly != 0) return false;
  CVELDPXMLNode* node = FindPath(SelectRoot(administrator), path);
  if (node == nullptr || node->ParentNode() == nullptr) return false;
  CloseIfBelow(node);
  node->ParentNode()->RemoveChild(node);
  return true;
}

// An open node that is about to go is open no longer.
void CVELDPXMLSettings::CloseIfBelow(const CVELDPXMLNode* node) noexcept {
  for (const CVELDPXMLNode* above = Current; above != nullptr; above = above->ParentNode())
    if (above == node) {
      Current = nullptr;
      return;
    }
}

bool CVELDPXMLSettings::SaveToFile(const std::filesystem::path& path) const {
  const std::string text = WideToNarrow(SerializeNode(User));
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file.is_open()) return true;
  std::string lines;
  for (const char character : text) {
    if (character == '\n') lines += '\r';
    lines += character;
  }
  file.write(lines.data(), static_cast<std::streamsize>(lines.size()));
  file.close();
  return file.good();
}

bool CVELDPXMLSettings::LoadFromFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file.is_open()) return false;
  std::string text;
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    text += line;
  }
  if (file.bad()) return false;
  const bool rootWasOpen = Current == &User;
  CloseIfBelow(&User);
  const bool parsed = ParseNode(User, NarrowToWide(std::move(text)));
  if (rootWasOpen) Current = &User;
  return parsed;
}
