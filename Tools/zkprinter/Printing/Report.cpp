#include "Tools/zkprinter/Printing/Report.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Platform/Foundation/Text/NSString.h" // IWYU pragma: keep: it is the complete type
#include "Platform/Foundation/Text/Unicode.h"
#include "Tools/zkprinter/Printing/Terminal.h"

namespace {

template <class... Functions>
struct Choice : Functions... {
    using Functions::operator()...;
};
template <class... Functions>
Choice(Functions...) -> Choice<Functions...>;

/// What the user typed may be no UTF-8.
std::string validUTF8(std::string_view bytes) {
    std::u16string units;
    unicode::appendUTF16(units, bytes);
    std::string text;
    unicode::appendUTF8(text, units);
    return text;
}

/// The text as it may leave this computer.
std::string presentable(const SerialNumbers &serials, const std::string &text) {
    return withoutAddresses(serials.hide(text));
}

class ReportText {
public:
    explicit ReportText(const SerialNumbers &serials) : serials_(serials) {}

    void print(const Section &section) const {
        printLine(styled(section.name, Style::heading));
        std::visit(Choice{[&](const Facts &facts) { print(facts, "  "); },
                          [&](const std::vector<Facts> &things) {
                              for (const Facts &facts : things)
                                  print(facts, "  - ");
                          },
                          [&](const Lines &lines) {
                              for (const std::string &line : lines)
                                  printLine("  " + shown(line));
                          }},
                   section.content);
        printLine("");
    }

private:
    std::string shown(const std::string &text) const {
        return escapedControlCharacters(presentable(serials_, text));
    }

    std::string shown(const Lines &lines) const {
        std::string text;
        for (const std::string &line : lines)
            text += (text.empty() ? "" : ", ") + shown(line);
        return text;
    }

    std::string shown(const FactValue &value) const {
        return std::visit(Choice{[](std::monostate) { return std::string("-"); },
                                 [](bool flag) { return std::string(flag ? "yes" : "no"); },
                                 [](std::int64_t number) { return std::to_string(number); },
                                 [](ByteCount count) { return qn::stringFromDiskSize(count.bytes)->utf8(); },
                                 [&](const auto &text) { return shown(text); }},
                          value);
    }

    void print(const Facts &facts, std::string bullet) const {
        for (const auto &[name, value] : facts) {
            printLine(bullet + name + ": " + shown(value));
            bullet.assign(bullet.size(), ' ');
        }
    }

    const SerialNumbers &serials_;
};

class ReportJson {
public:
    ReportJson(const SerialNumbers &serials, Json &json) : serials_(serials), json_(json) {}

    void write(const Section &section) {
        const char *const name = section.name.c_str();
        std::visit(Choice{[&](const Facts &facts) { json_.object(name, [&](Json &) { write(facts); }); },
                          [&](const std::vector<Facts> &things) {
                              json_.array(name, [&](Json &list) {
                                  for (const Facts &facts : things)
                                      list.element([&](Json &) { write(facts); });
                              });
                          },
                          [&](const Lines &lines) { write(name, lines); }},
                   section.content);
    }

private:
    void write(const char *name, const Lines &lines) {
        json_.array(name, [&](Json &list) {
            for (const std::string &line : lines)
                list.element(presentable(serials_, line));
        });
    }

    void write(const Facts &facts) {
        for (const auto &[name, value] : facts) {
            const char *const key = name.c_str();
            std::visit(
                Choice{[&](std::monostate) { json_.null(key); }, [&](bool flag) { json_.field(key, flag); },
                       [&](std::int64_t number) { json_.field(key, number); },
                       [&](ByteCount count) { json_.field(key, static_cast<std::int64_t>(count.bytes)); },
                       [&](const std::string &text) { json_.field(key, presentable(serials_, text)); },
                       [&](const Lines &lines) { write(key, lines); }},
                value);
        }
    }

    const SerialNumbers &serials_;
    Json &json_;
};

const SerialNumbers &serialsIn(const Section &section, const SerialNumbers &serials) {
    static const SerialNumbers none;
    return section.tellsOfPrinters ? serials : none;
}

} // namespace

std::string sentenceOf(const Failure &failure) {
    return validUTF8(failure.what());
}

void describe(Json &json, const Subject &subject) {
    json.field("queue", validUTF8(subject.queue));
    subject.deviceUri ? json.field("deviceUri", validUTF8(*subject.deviceUri)) : json.null("deviceUri");
}

void describe(Json &json, const Failure &failure) {
    if (failure.subject())
        describe(json, *failure.subject());
    json.object("error", [&](Json &error) {
        error.field("code", static_cast<std::int64_t>(failure.status()))
            .field("name", nameOf(failure.status()))
            .field("message", sentenceOf(failure));
    });
}

void printReport(const std::vector<Section> &sections, const SerialNumbers &serials, Format format,
                 const std::optional<Failure> &failure) {
    if (format == Format::text) {
        for (const Section &section : sections)
            ReportText(serialsIn(section, serials)).print(section);
        return;
    }
    printJson([&](Json &json) {
        for (const Section &section : sections)
            ReportJson(serialsIn(section, serials), json).write(section);
        if (failure)
            describe(json, *failure);
    });
}
