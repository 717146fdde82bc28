// The open dictionary: the groups of the standard, and nothing that a message could be refused for.
#pragma once

#include <quickfix/DataDictionaryProvider.h>

#include <string>

// For the version of FIX; the application's messages by the dictionary file if there is one, which also refuses
// nothing for the order of fields, empty fields and fields that it does not know. Throws FIX::ConfigError.
FIX::DataDictionaryProvider MakeDictionaries(const std::string& beginString, const std::string& file);
