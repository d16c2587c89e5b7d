// The JSON text that the model-mapping benchmark maps: an array of printers, each with twenty plain values, a
// contact and four tags.
#pragma once

#include <string>

std::string printersDocument(int count);
