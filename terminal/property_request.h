// What message 32003 carries: the grid whose properties are to be shown, and the plug-in's two functions for it. Not
// the pane: terminal/windows/property_pane.h. The calling thread only.
#pragma once

#include <cstdint>

class CQORPProp;
class CQORPPropList;
class CQORPacketReader;

// Fills the list with the properties of the book with the focus, and tells of it by message 32004 before it returns.
// The second address has no meaning but to be one.
using PropertyFillFunction = void (*)(CQORPPropList* list, const void* second);
// Takes over an item of that list that the user has changed. The grid is the plug-in's, by its address.
using PropertyApplyFunction = void (*)(CQORPProp* property, void* grid);

struct PropertyRequest {
  PropertyFillFunction Fill = nullptr;
  PropertyApplyFunction Apply = nullptr;
  std::uint64_t Grid = 0;

  bool Complete() const noexcept { return Fill != nullptr && Apply != nullptr && Grid != 0; }
};

// Of a message whose number has been read; fields of other tags are skipped.
PropertyRequest ReadPropertyRequest(CQORPacketReader& message);
