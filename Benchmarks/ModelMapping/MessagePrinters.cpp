#include "Benchmarks/ModelMapping/MessagePrinters.h"

#include <google/protobuf/util/json_util.h>

namespace json = google::protobuf::util;

MessagePrinters::Objects MessagePrinters::read(const Text &text) {
    Objects objects;
    if (!json::JsonStringToMessage(text, &objects).ok())
        objects.Clear();
    return objects;
}

MessagePrinters::Text MessagePrinters::write(const Objects &objects) {
    json::JsonPrintOptions options;
    options.always_print_primitive_fields = true; // as the others do
    Text text;
    if (!json::MessageToJsonString(objects, &text, options).ok())
        text.clear();
    return text;
}
