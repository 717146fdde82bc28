// QuickFIX, to compare with the decoder and the mapping: FIX 4.4 execution reports with the fields of a sample trade.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class FixReports {
 public:
  // Reports 0 to count - 1, each of a different trade.
  explicit FixReports(std::size_t count);
  ~FixReports();
  FixReports(const FixReports&) = delete;
  FixReports& operator=(const FixReports&) = delete;

  const std::string& TextOf(std::size_t i) const { return Texts[i]; }
  // Parses report i into a new message and counts its fields with header and trailer.
  std::size_t ParseAndCountFields(std::size_t i) const;
  // The same as a session does it: with the open dictionary of the engine, against which it is validated.
  std::size_t ParseAsSession(std::size_t i) const;

 private:
  struct Dictionaries;
  std::unique_ptr<Dictionaries> Session;
  std::vector<std::string> Texts;
};
