// SettingsTree: the two roots of a settings store, and the places in it that are open. Not the operations on values:
// CVELDPXMLSettings, of which several can stand over one tree and then see each other's writes at once. One thread at a
// time.
#pragma once

#include <vector>

#include "grid_base/settings_node.h"

// Promises: no open place outlives its node. Works because each settings object lends the tree its pointer, and every
// removal goes through the tree, which clears the pointers into what is removed: their number times the tree's depth.
class SettingsTree {
 public:
  CVELDPXMLNode Machine{L"LOCAL_MACHINE", nullptr};
  CVELDPXMLNode User{L"CURRENT_USER", nullptr};
  bool Changed = false;  // by a settings object, since whoever keeps the tree in a file cleared it

  void AddOpenPlace(CVELDPXMLNode** place) { OpenPlaces.push_back(place); }
  void RemoveOpenPlace(CVELDPXMLNode** place) { std::erase(OpenPlaces, place); }

  // Takes the node, which is not a root, out of the tree with all below it.
  void RemoveNode(const CVELDPXMLNode& node);
  // Closes what is open below the node, not the node itself, before its children are replaced.
  void CloseBelow(const CVELDPXMLNode& node) noexcept;

 private:
  std::vector<CVELDPXMLNode**> OpenPlaces;
};
