// Grapheme clusters: what people take for one character, however many code units it has, e.g. a letter with
// its accents or a flag. Any thread.
#pragma once

#include <QStringView>

#include <vector>

/// The indices, in UTF-16 units, at which a text may be cut: 0, the end of the first cluster, and so on up to
/// the text's length. Just 0 for an empty text. As Unicode's UAX #29 defines extended grapheme clusters.
std::vector<qsizetype> clusterBoundaries(QStringView text);

qsizetype numberOfClusters(QStringView text);
