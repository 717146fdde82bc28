#include "terminal/selection_answer.h"

#include "host_link/message_header.h"
#include "host_link/packet_reader.h"
#include "host_link/packet_writer.h"

namespace {
constexpr std::uint16_t kLongestText = 48;
}

void AnswerSelection(MessageFunction answer, const std::string& exchange, const std::string& securityId,
                     CMessageLog& log) {
  CQORPacketWriter writer(kModePlain);
  writer.AddU16(10002, 32023);
  if (!exchange.empty() && !securityId.empty()) {
    writer.AddText(55010, exchange.c_str(), kLongestText, false);
    writer.AddText(55104, securityId.c_str(), kLongestText, false);
  }
  writer.Finish();
  log.Add(true, writer);
  CQORPacketReader reader(writer.GetData(), writer.GetSize());
  answer(&reader);
}
