// QuickFIX, to compare with the decoder: FIX 4.4 execution reports with the fields of a sample trade.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

class FixReports {
 public:
  // Reports 0 to count - 1, each of a different trade.
  explicit FixReports(std::size_t count);
  // Parses report i into a new message and counts its fields with header and trailer.
  std::size_t ParseAndCountFields(std::size_t i) const;

 private:
  std::vector<std::string> Texts;
};
