#include "terminal/property_request.h"

#include "host_link/packet_reader.h"

PropertyRequest ReadPropertyRequest(CQORPacketReader& message) {
  std::uint64_t fill = 0, apply = 0;
  PropertyRequest request;
  while (message.NextTag()) {
    if (message.Tag == 30002)
      message.ReadU64(fill);
    else if (message.Tag == 30031)
      message.ReadU64(apply);
    else if (message.Tag == 30001)
      message.ReadU64(request.Grid);
    else
      message.SkipValue();
  }
  request.Fill = reinterpret_cast<PropertyFillFunction>(fill);
  request.Apply = reinterpret_cast<PropertyApplyFunction>(apply);
  return request;
}
