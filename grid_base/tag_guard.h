// Keeps values of a settings tree from being read as tags of their file. Not for column profiles, whose format writes
// every value as it stands. Pure; any thread.
#pragma once

#include "grid_base/settings_node.h"

// The format has no escape: a value with the tag of an element around it would end that element, and all behind it
// would be lost. Such a tag loses its bracket to a parenthesis; all other text stays. What counts is what will be read
// back: without line feeds, and with '?' for what the code page does not have. Linear in the size of the file: each
// bracket costs one look-up among the names around it, by hash.
void BreakTagsInValues(CVELDPXMLNode& root);
