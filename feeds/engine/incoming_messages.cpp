#include "feeds/engine/incoming_messages.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char kSoh = '\x01';
constexpr int kMsgSeqNum = 34;
constexpr int kMsgType = 35;

}  // namespace

std::string FixField(const std::string& text, int tag) {
  const std::string wanted = kSoh + std::to_string(tag) + "=";
  const std::size_t found = text.find(wanted);
  if (found == std::string::npos) return std::string();
  const std::size_t begin = found + wanted.size();
  return text.substr(begin, text.find(kSoh, begin) - begin);
}

bool IsSessionMessage(const std::string& text) {
  const std::string type = FixField(text, kMsgType);
  return type.size() == 1 && std::strchr("01245A", type[0]) != nullptr;
}

bool IsUnharmed(const std::string& text) {
  constexpr std::size_t kTrailer = 7;  // "10=000" and its end
  if (text.size() < kTrailer) return false;
  unsigned sum = 0;
  for (std::size_t i = 0; i < text.size() - kTrailer; ++i) sum += static_cast<unsigned char>(text[i]);
  char trailer[16];
  std::snprintf(trailer, sizeof trailer, "10=%03u%c", sum % 256, kSoh);
  return text.compare(text.size() - kTrailer, kTrailer, trailer) == 0;
}

bool IncomingMessages::Take(const std::string& text, std::uint32_t expected) {
  const auto number = static_cast<std::uint32_t>(std::strtoul(FixField(text, kMsgSeqNum).c_str(), nullptr, 10));
  if (number > expected) {
    if (Aside.size() >= kMostAside || AsideBytes + text.size() > kMostBytes) return false;
    std::string& kept = Aside[number];
    AsideBytes += text.size() - kept.size();
    kept = text;
  }
  Last = text;
  LastNumber = number;
  return true;
}

std::string IncomingMessages::TakeGarbled() {
  const auto aside = Aside.find(LastNumber);
  if (aside != Aside.end() && aside->second == Last) {
    AsideBytes -= aside->second.size();
    Aside.erase(aside);
  }
  LastNumber = 0;
  return std::move(Last);
}

const std::string* IncomingMessages::TextOf(std::uint32_t number) const {
  if (number == LastNumber) return &Last;
  const auto aside = Aside.find(number);
  return aside == Aside.end() ? nullptr : &aside->second;
}

void IncomingMessages::ForgetBelow(std::uint32_t number) {
  while (!Aside.empty() && Aside.begin()->first < number) {
    AsideBytes -= Aside.begin()->second.size();
    Aside.erase(Aside.begin());
  }
}

void IncomingMessages::Clear() {
  LastNumber = Accepted = 0;
  Aside.clear();
  AsideBytes = 0;
}
