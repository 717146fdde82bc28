// DataFields: which fields hold any bytes, with their length in the field before, and whether such a length lies.
#pragma once

#include <quickfix/DataDictionaryProvider.h>

#include <string>
#include <vector>

class DataFields {
 public:
  // Those that one of the dictionaries for the version of FIX declares.
  DataFields(const FIX::DataDictionaryProvider& dictionaries, const std::string& beginString);

  // QuickFIX 1.15 takes the length of a data field as it is told, also beyond the end of the message: it would read
  // there. Such a message must not reach it. Linear: each length is compared with the last field that has it.
  bool HasLengthBeyondEnd(const std::string& text) const;

 private:
  std::vector<bool> IsData;  // by tag
};
