// IncomingMessages: the raw texts that have come and whose numbers have not been taken yet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

// The value of the first field with that tag; empty for none.
std::string FixField(const std::string& text, int tag);
// A message of the session, not of the application: 35 is 0, 1, 2, 4, 5 or A. A reject (3) is none of them, as its text
// is worth keeping.
bool IsSessionMessage(const std::string& text);

// The checksum (10) is right: the message is as it was sent.
bool IsUnharmed(const std::string& text);

// The engine parses the message that has just come, or puts it aside while earlier ones are missing and parses it
// later. Both find its raw text here by its number. What is put aside is bounded.
class IncomingMessages {
 public:
  // False if it is ahead of the expected number and too many are put aside already: the engine must not see it. The
  // counterparty sends it again.
  bool Take(const std::string& text, std::uint32_t expected);
  bool IsLast(std::uint32_t number) const { return LastNumber == number; }
  // What has come last is garbled. Gives its text.
  std::string TakeGarbled();
  // The engine has found nothing wrong with that message.
  void Accept(std::uint32_t number) { Accepted = number; }
  bool IsAccepted(std::uint32_t number) const { return Accepted == number; }
  // Null if no message with that number has come.
  const std::string* TextOf(std::uint32_t number) const;
  void ForgetBelow(std::uint32_t number);
  void Clear();

  static constexpr std::size_t kMostAside = 10000;
  static constexpr std::size_t kMostBytes = 16u << 20;

 private:
  std::string Last;
  std::uint32_t LastNumber = 0;
  std::uint32_t Accepted = 0;
  std::map<std::uint32_t, std::string> Aside;
  std::size_t AsideBytes = 0;
};
