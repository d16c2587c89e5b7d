// Looks property lists from outside over before libplist reads them: its parsers recurse as deep as the list
// nests and copy whatever a binary list shares, without a limit of their own.
#pragma once

#include <string>
#include <string_view>

/// Whether elements nest no deeper than a list may, no document type defines entities, and texts have no more
/// references such as "&amp;" than libplist can resolve in reasonable time: about a hundred thousand in one.
bool isHarmlessXMLPropertyList(std::string_view text);

/// The harmless text with empty comments in its long character data, which change nothing but keep the time
/// short: libplist moves all that follows in the piece for every reference (`&lt;`) that it resolves.
std::string xmlInShortTexts(std::string_view text);

/// Whether every object lies within the bytes, containers nest no deeper than a list may (so that none holds
/// itself), no key has the character 0, references are 64 bits wide at most, and the list with every shared
/// object unfolded stays within a multiple of its size or 64 MiB.
bool isHarmlessBinaryPropertyList(std::string_view bytes);
