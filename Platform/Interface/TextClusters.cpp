#include "Platform/Interface/TextClusters.h"

#include <QTextBoundaryFinder>

std::vector<qsizetype> clusterBoundaries(QStringView text) {
    std::vector<qsizetype> boundaries{0};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype next; (next = finder.toNextBoundary()) > 0;)
        boundaries.push_back(next);
    return boundaries;
}

qsizetype numberOfClusters(QStringView text) {
    return static_cast<qsizetype>(clusterBoundaries(text).size()) - 1;
}
