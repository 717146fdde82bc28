// CVELDPXMLNode: one node of the settings tree: a name, a value, children in the order in which they were made.
// Not the file format: settings_text.h. An instance is used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

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
