#include "grid_base/settings_node.h"

#include <algorithm>
#include <iterator>

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

// Level by level: a node handed to the waiting list has no children left when it is destroyed.
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
