#include "grid_base/xml_settings.h"

#include <fstream>

#include "foundations/error_report.h"
#include "grid_base/settings_file.h"
#include "grid_base/settings_path.h"
#include "grid_base/settings_text.h"
#include "platform/last_error.h"

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

// Removes from read-only settings as well: meant so.
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

// The old file is emptied before the new text is written: meant so. RegistryStore keeps the old one until the new is
// whole.
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
