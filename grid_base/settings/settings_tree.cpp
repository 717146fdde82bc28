#include "grid_base/settings/settings_tree.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

bool IsBelow(const CVELDPXMLNode* node, const CVELDPXMLNode& above) {
  while (node != nullptr && node->ParentNode() != &above) node = node->ParentNode();
  return node != nullptr;
}

}  // namespace

void SettingsTree::CloseBelow(const CVELDPXMLNode& node) noexcept {
  for (CVELDPXMLNode** place : OpenPlaces)
    if (IsBelow(*place, node)) *place = nullptr;
}

void SettingsTree::RemoveNode(const CVELDPXMLNode& node) {
  CloseBelow(node);
  for (CVELDPXMLNode** place : OpenPlaces)
    if (*place == &node) *place = nullptr;
  node.ParentNode()->RemoveChild(&node);
  Changed = true;
}

CVELDPXMLNode::~CVELDPXMLNode() {
  RemoveChildren();
}

CVELDPXMLNode* CVELDPXMLNode::FindChild(std::wstring_view name) const noexcept {
  const auto found =
      std::find_if(ChildNodes.begin(), ChildNodes.end(), [name](const auto& child) { return child->Name == name; });
  return found == ChildNodes.end() ? nullptr : found->get();
}

CVELDPXMLNode* CVELDPXMLNode::AppendChild(std::wstring name) {
  ChildNodes.push_back(std::make_unique<CVELDPXMLNode>(std::move(name), this));
  return ChildNodes.back().get();
}

CVELDPXMLNode* CVELDPXMLNode::AdoptChild(std::unique_ptr<CVELDPXMLNode> child) {
  child->Parent = this;
  ChildNodes.push_back(std::move(child));
  return ChildNodes.back().get();
}

void CVELDPXMLNode::RemoveChild(const CVELDPXMLNode* child) {
  std::erase_if(ChildNodes, [child](const auto& each) { return each.get() == child; });
}

// Level by level: a node has no children any longer when it is destroyed.
void CVELDPXMLNode::RemoveChildren() {
  std::vector<std::unique_ptr<CVELDPXMLNode>> waiting = std::move(ChildNodes);
  ChildNodes.clear();
  while (!waiting.empty()) {
    const std::unique_ptr<CVELDPXMLNode> node = std::move(waiting.back());
    waiting.pop_back();
    std::move(node->ChildNodes.begin(), node->ChildNodes.end(), std::back_inserter(waiting));
    node->ChildNodes.clear();
  }
}

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
