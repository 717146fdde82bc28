#include "terminal/message_target.h"

#include "host_link/message_header.h"
#include "host_link/packet_writer.h"

bool MessageTarget::Send(std::uint16_t number) {
  CQORPacketWriter writer(kModePlain);
  writer.AddU16(10002, number);
  writer.Finish();
  CQORPacketReader reader(writer.GetData(), writer.GetSize());
  std::uint16_t needed = 0;
  std::uint16_t consumed = 0;
  return reader.ParseHeader(needed, consumed) && Deliver(reader, {writer.Buffer, writer.GetSize(), 0});
}
