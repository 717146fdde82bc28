#include "grid_base/settings_path.h"

#include <string_view>

namespace {
constexpr std::wstring_view kNotInNames = L" <>\r\n";
}

std::wstring StoredName(std::wstring name) {
  std::erase_if(name, [](wchar_t character) { return kNotInNames.find(character) != std::wstring_view::npos; });
  name.erase(0, name.find_first_not_of(L'/'));
  return name;
}

std::vector<std::wstring> PathParts(const std::wstring& path) {
  std::vector<std::wstring> parts;
  for (std::size_t at = 0; at < path.size();) {
    const std::size_t end = std::min(path.find(L'\\', at), path.size());
    parts.push_back(StoredName(path.substr(at, end - at)));
    at = end + 1;
  }
  return parts;
}

CVELDPXMLNode* FindPath(CVELDPXMLNode& root, const std::wstring& path) {
  CVELDPXMLNode* node = &root;
  for (const std::wstring& part : PathParts(path)) {
    node = node->FindChild(part);
    if (node == nullptr) return nullptr;
  }
  return node;
}
