#include "grid_base/settings_tree.h"

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
