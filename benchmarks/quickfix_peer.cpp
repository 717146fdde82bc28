#include "benchmarks/quickfix_peer.h"

#include <quickfix/DataDictionary.h>
#include <quickfix/Message.h>

#include <cstdio>

#include "feeds/engine/open_dictionary.h"

namespace {

// The body as tag=value, with the texts and numbers of the sample trade message under standard tags, or user-defined
// tags if there is none.
std::string ReportBody(unsigned i) {
  char body[1024];
  std::snprintf(
      body, sizeof body,
      "35=8\00149=DEALER%02u\00156=DESK1\00134=%u\00152=20131007-09:30:01\00137=11%08u\00117=%07u\001150=F\00139=2\001"
      "1=C%03u\001207=COMEX\00148=GC2013%02u\001167=FUTCOM\00155=GC\001200=201312\001201=0\001202=0\001107=GOLD\00154=%"
      "u\001"
      "40=2\00132=%u\001151=%u\00131=%.1f\00177=O\001231=100\00160=20131007-09:30:01\00111=%u\001198=%u\0015001="
      "20131007-09:30:00\001"
      "5002=20131007-09:30:00\0015003=%u\0015004=M12\0015005=100200\00158=order "
      "1\0015006=%u\0015007=0\0015008=0\0015009=text 123456\001"
      "5010=0\0015011=TERM-1\0015012=AAAPL1234C\0015013=ALGO1\0015014=1\0015015=PART1\001",
      i % 40, i + 1, i / 3, i, i % 300, i % 12 + 1, i % 2 + 1, i % 50 + 1, i % 7, 1313.0 + (i % 1000) / 10.0, i + 1,
      i / 3, i % 3 + 1, i % 9);
  return body;
}

std::string Framed(const std::string& body) {
  std::string report = "8=FIX.4.4\0019=" + std::to_string(body.size()) + "\001" + body;
  unsigned sum = 0;
  for (const char byte : report) sum += static_cast<unsigned char>(byte);
  char trailer[16];
  std::snprintf(trailer, sizeof trailer, "10=%03u\001", sum % 256);
  return report + trailer;
}

}  // namespace

struct FixReports::Dictionaries {
  FIX::DataDictionaryProvider All = MakeDictionaries("FIX.4.4", "");
  const FIX::DataDictionary& Open = All.getSessionDataDictionary(FIX::BeginString("FIX.4.4"));
};

FixReports::FixReports(std::size_t count) : Session(new Dictionaries) {
  for (std::size_t i = 0; i < count; ++i) {
    Texts.push_back(Framed(ReportBody(static_cast<unsigned>(i))));
    Texts.back().shrink_to_fit();  // no more memory than the reports of a journal
  }
}
FixReports::~FixReports() = default;

namespace {

std::size_t CountFields(const FIX::Message& message) {
  return message.totalFields() + message.getHeader().totalFields() + message.getTrailer().totalFields();
}

}  // namespace

std::size_t FixReports::ParseAndCountFields(std::size_t i) const {
  return CountFields(FIX::Message(Texts[i], true));
}

std::size_t FixReports::ParseAsSession(std::size_t i) const {
  const FIX::Message message(Texts[i], Session->Open, true);
  Session->Open.validate(message);
  return CountFields(message);
}
