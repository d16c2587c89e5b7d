// Writes the program's JSON: one document on standard output, or one per line for a stream of events.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

class Json {
public:
    Json &field(const char *key, std::string_view text) { return begin(key).element(text); }
    Json &field(const char *key, const std::string &text) { return field(key, std::string_view(text)); }
    Json &field(const char *key, const char *text) { return field(key, std::string_view(text)); }
    Json &field(const char *key, bool flag) { return begin(key).put(flag ? "true" : "false"); }
    Json &field(const char *key, std::int64_t number) { return begin(key).put(std::to_string(number)); }
    /// With three decimals.
    Json &field(const char *key, double number);
    Json &null(const char *key) { return begin(key).put("null"); }
    /// An object under the key; `fill` writes its fields.
    Json &object(const char *key, const std::function<void(Json &)> &fill) {
        return begin(key).element(fill);
    }
    /// An array under the key; `fill` writes its elements.
    Json &array(const char *key, const std::function<void(Json &)> &fill) {
        begin(key).put("[");
        fill(*this);
        text_ += ']';
        return *this;
    }
    /// An object as an element of an array, or as the document.
    Json &element(const std::function<void(Json &)> &fill) {
        put("{");
        fill(*this);
        text_ += '}';
        return *this;
    }
    Json &element(std::string_view text) { return put(quoted(text)); }

    const std::string &text() const { return text_; }

private:
    static std::string quoted(std::string_view text);

    Json &begin(const char *key) {
        put(quoted(key));
        text_ += ':';
        return *this;
    }
    /// Appends the piece, after a comma unless it is the first of its object or array.
    Json &put(std::string_view piece) {
        if (!text_.empty() && std::string_view("{[:").find(text_.back()) == std::string_view::npos)
            text_ += ',';
        text_ += piece;
        return *this;
    }

    std::string text_;
};

/// The version of all documents; it changes when one of them no longer means what it did. What they look like
/// is in Resources/zkprinter.schema.json.
inline constexpr std::int64_t jsonSchema = 1;

/// Prints one JSON object on a line of its own: its version as "schema", then the fields that `fill` writes.
void printJson(const std::function<void(Json &)> &fill);
