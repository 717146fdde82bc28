// SettingsTree: the two roots of a settings store, and the places in it that are open. One thread at a time.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// CVELDPXMLNode: one node of the settings tree: a name, a value, children in the order in which they were made. An
// instance is used by one thread at a time.

// Promises: destroying a tree of any depth takes bounded stack and time in proportion to its nodes.
class CVELDPXMLNode {
 public:
  CVELDPXMLNode() = default;
  CVELDPXMLNode(std::wstring name, CVELDPXMLNode* parent) : Name(std::move(name)), Parent(parent) {}
  ~CVELDPXMLNode();
  CVELDPXMLNode(const CVELDPXMLNode&) = delete;
  CVELDPXMLNode& operator=(const CVELDPXMLNode&) = delete;

  // The first child of exactly that name; null when there is none. Searches the children.
  CVELDPXMLNode* FindChild(std::wstring_view name) const noexcept;
  CVELDPXMLNode* AppendChild(std::wstring name);
  void RemoveChild(const CVELDPXMLNode* child);
  // Takes over a child made elsewhere.
  CVELDPXMLNode* AdoptChild(std::unique_ptr<CVELDPXMLNode> child);
  void RemoveChildren();

  const std::vector<std::unique_ptr<CVELDPXMLNode>>& Children() const noexcept { return ChildNodes; }
  CVELDPXMLNode* ParentNode() const noexcept { return Parent; }
  // Written with its children between a line that opens it and one that closes it; any other node is one line with its
  // value in quotes.
  bool IsBranch() const noexcept { return Parent == nullptr || !ChildNodes.empty(); }

  std::wstring Name;
  std::wstring Value;

 private:
  CVELDPXMLNode* Parent = nullptr;
  std::vector<std::unique_ptr<CVELDPXMLNode>> ChildNodes;
};

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

// Paths and keys of the settings tree.

// A name as it stands in the tree: without its blanks, and without what would end or bend its tag in a file: angle
// brackets, line ends and a stroke in front. Names come from titles too, and so from the terminal's data.
std::wstring StoredName(std::wstring name);

// The names of a path, between its backslashes; two in a row stand for an empty name, a last one for nothing. An empty
// path has no names.
std::vector<std::wstring> PathParts(const std::wstring& path);

// The node that the path leads to from the root; null where a part of it is missing.
CVELDPXMLNode* FindPath(CVELDPXMLNode& root, const std::wstring& path);
