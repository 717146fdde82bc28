// SettingsTree: the two roots of a settings store with their nodes, and the paths and keys that lead to them.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A name, a value, and children in the order of their creation. Destroying a tree of any depth takes O(1) stack and
// linear time.
class CVELDPXMLNode {
 public:
  CVELDPXMLNode() = default;
  CVELDPXMLNode(std::wstring name, CVELDPXMLNode* parent) : Name(std::move(name)), Parent(parent) {}
  ~CVELDPXMLNode();
  CVELDPXMLNode(const CVELDPXMLNode&) = delete;
  CVELDPXMLNode& operator=(const CVELDPXMLNode&) = delete;

  // The first child of exactly that name, or null. Searches the children.
  CVELDPXMLNode* FindChild(std::wstring_view name) const noexcept;
  CVELDPXMLNode* AppendChild(std::wstring name);
  void RemoveChild(const CVELDPXMLNode* child);
  // Appends a child that was made elsewhere.
  CVELDPXMLNode* AdoptChild(std::unique_ptr<CVELDPXMLNode> child);
  void RemoveChildren();

  const std::vector<std::unique_ptr<CVELDPXMLNode>>& Children() const noexcept { return ChildNodes; }
  CVELDPXMLNode* ParentNode() const noexcept { return Parent; }
  // A branch is written as an opening line, its children and a closing line; any other node as one line with its value.
  bool IsBranch() const noexcept { return Parent == nullptr || !ChildNodes.empty(); }

  std::wstring Name;
  std::wstring Value;

 private:
  CVELDPXMLNode* Parent = nullptr;
  std::vector<std::unique_ptr<CVELDPXMLNode>> ChildNodes;
};

// No open place outlives its node: settings objects register their pointers here, and every removal clears the pointers
// into the removed part. A removal costs the number of pointers times the tree's depth.
class SettingsTree {
 public:
  CVELDPXMLNode Machine{L"LOCAL_MACHINE", nullptr};
  CVELDPXMLNode User{L"CURRENT_USER", nullptr};
  bool Changed = false;  // set by settings objects, cleared by the owner of the file

  void AddOpenPlace(CVELDPXMLNode** place) { OpenPlaces.push_back(place); }
  void RemoveOpenPlace(CVELDPXMLNode** place) { std::erase(OpenPlaces, place); }

  // Removes the node, which is not a root, with its descendants.
  void RemoveNode(const CVELDPXMLNode& node);
  // Closes what is open below the node, before its children are replaced. The node itself stays open.
  void CloseBelow(const CVELDPXMLNode& node) noexcept;

 private:
  std::vector<CVELDPXMLNode**> OpenPlaces;
};

// A name as the tree stores it: without blanks and without what breaks its tag in a file (angle brackets, line ends, a
// leading slash). Names may be titles, which come from the terminal.
std::wstring StoredName(std::wstring name);

// The names between the backslashes of a path; two in a row give an empty name, a final one gives none. An empty path
// has no names.
std::vector<std::wstring> PathParts(const std::wstring& path);

// The node at the path below the root; null if a part is missing.
CVELDPXMLNode* FindPath(CVELDPXMLNode& root, const std::wstring& path);
