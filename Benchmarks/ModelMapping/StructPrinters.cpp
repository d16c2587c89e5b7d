#include "Benchmarks/ModelMapping/StructPrinters.h"

#include <nlohmann/json.hpp>

// The macro names types without the global namespace's mark, and defines functions that nothing declares.
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(StructContact, identifier, name, mail, active)

static void from_json(const nlohmann::json &json, StructDate &date) {
    date = StructDate::read(json.get_ref<const std::string &>().c_str());
}
static void to_json(nlohmann::json &json, const StructDate &date) {
    json = date.text();
}

StructDate StructDate::read(const char *text) {
    std::tm parts{};
    return {strptime(text, "%Y-%m-%dT%H:%M:%SZ", &parts) ? timegm(&parts) : 0};
}

std::string StructDate::text() const {
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char text[32];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

void from_json(const nlohmann::json &json, StructPrinter &printer) {
    json.at("enabled").get_to(printer.enabled);
    json.at("shared").get_to(printer.shared);
    json.at("trays").get_to(printer.trays);
    json.at("priority").get_to(printer.priority);
    json.at("offset").get_to(printer.offset);
    json.at("port").get_to(printer.port);
    json.at("jobs").get_to(printer.jobs);
    json.at("flags").get_to(printer.flags);
    json.at("balance").get_to(printer.balance);
    json.at("printed").get_to(printer.printed);
    json.at("density").get_to(printer.density);
    json.at("level").get_to(printer.level);
    json.at("name").get_to(printer.name);
    json.at("model").get_to(printer.model);
    json.at("location").get_to(printer.location);
    json.at("queue").get_to(printer.queue);
    json.at("comment").get_to(printer.comment);
    json.at("state").get_to(printer.state);
    json.at("installed").get_to(printer.installed);
    json.at("address").get_to(printer.address);
    json.at("contact").get_to(printer.contact);
    json.at("tags").get_to(printer.tags);
}

void to_json(nlohmann::json &json, const StructPrinter &printer) {
    json["enabled"] = printer.enabled;
    json["shared"] = printer.shared;
    json["trays"] = printer.trays;
    json["priority"] = printer.priority;
    json["offset"] = printer.offset;
    json["port"] = printer.port;
    json["jobs"] = printer.jobs;
    json["flags"] = printer.flags;
    json["balance"] = printer.balance;
    json["printed"] = printer.printed;
    json["density"] = printer.density;
    json["level"] = printer.level;
    json["name"] = printer.name;
    json["model"] = printer.model;
    json["location"] = printer.location;
    json["queue"] = printer.queue;
    json["comment"] = printer.comment;
    json["state"] = printer.state;
    json["installed"] = printer.installed;
    json["address"] = printer.address;
    json["contact"] = printer.contact;
    json["tags"] = printer.tags;
}

StructPrinters::Objects StructPrinters::read(const Text &text) {
    return nlohmann::json::parse(text).get<Objects>();
}

StructPrinters::Text StructPrinters::write(const Objects &objects) {
    return nlohmann::json(objects).dump();
}
