// The program's JSON: one document on standard output, or one a line for a stream of events.
#pragma once

#include <functional>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>
#include <string_view>

class Json {
public:
    using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

    explicit Json(Writer &writer) : writer_(writer) {}

    Json &field(const char *key, std::string_view text) {
        writer_.Key(key);
        writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        return *this;
    }
    Json &field(const char *key, const std::string &text) { return field(key, std::string_view(text)); }
    Json &field(const char *key, const char *text) { return field(key, std::string_view(text)); }
    Json &field(const char *key, bool flag) {
        writer_.Key(key);
        writer_.Bool(flag);
        return *this;
    }
    Json &field(const char *key, std::int64_t number) {
        writer_.Key(key);
        writer_.Int64(number);
        return *this;
    }
    Json &null(const char *key) {
        writer_.Key(key);
        writer_.Null();
        return *this;
    }
    /// An object under the key; `fill` writes its fields.
    Json &object(const char *key, const std::function<void(Json &)> &fill) {
        writer_.Key(key);
        return element(fill);
    }
    /// An array under the key; `fill` writes its elements.
    Json &array(const char *key, const std::function<void(Json &)> &fill) {
        writer_.Key(key);
        writer_.StartArray();
        fill(*this);
        writer_.EndArray();
        return *this;
    }
    /// An object as an element of an array, or as the document.
    Json &element(const std::function<void(Json &)> &fill) {
        writer_.StartObject();
        fill(*this);
        writer_.EndObject();
        return *this;
    }
    Json &element(std::string_view text) {
        writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        return *this;
    }

private:
    Writer &writer_;
};

/// Prints one JSON object on a line of its own; `fill` writes its fields.
void printJson(const std::function<void(Json &)> &fill);
