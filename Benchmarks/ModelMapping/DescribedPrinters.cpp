#include "Benchmarks/ModelMapping/DescribedPrinters.h"

#include <boost/describe.hpp>
#include <boost/json.hpp>

BOOST_DESCRIBE_STRUCT(StructContact, (), (identifier, name, mail, active))
BOOST_DESCRIBE_STRUCT(StructPrinter, (),
                      (enabled, shared, trays, priority, offset, port, jobs, flags, balance, printed, density,
                       level, name, model, location, queue, comment, state, installed, address, contact,
                       tags))

// Found by their argument.
static StructDate tag_invoke(boost::json::value_to_tag<StructDate>, const boost::json::value &json) {
    return StructDate::read(json.as_string().c_str());
}
static void tag_invoke(boost::json::value_from_tag, boost::json::value &json, const StructDate &date) {
    json = date.text();
}

DescribedPrinters::Objects DescribedPrinters::read(const Text &text) {
    return boost::json::value_to<Objects>(boost::json::parse(text));
}

DescribedPrinters::Text DescribedPrinters::write(const Objects &objects) {
    return boost::json::serialize(boost::json::value_from(objects));
}
