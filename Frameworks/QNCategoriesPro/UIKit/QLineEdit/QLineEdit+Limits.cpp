#include "Frameworks/QNCategoriesPro/UIKit/QLineEdit/QLineEdit+Limits.h"

#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Interface/TextClusters.h"

#include <QLineEdit>
#include <QPointer>
#include <QValidator>

#include <algorithm>

namespace {

/// Changes texts so that they are within the limits.
class LimitingValidator final : public QValidator {
public:
    explicit LimitingValidator(QLineEdit &field) : QValidator(&field), other_(field.validator()) {}

    std::optional<qsizetype> limit;
    std::function<bool(char32_t)> isAllowed;

    State validate(QString &text, int &cursor) const override {
        removeForbidden(text, cursor);
        removeExcess(text, cursor);
        return other_ ? other_->validate(text, cursor) : Acceptable;
    }
    void fixup(QString &text) const override {
        if (other_)
            other_->fixup(text);
    }

private:
    void removeForbidden(QString &text, int &cursor) const {
        if (!isAllowed)
            return;
        const auto allowedOf = [this](QStringView part) {
            QString allowed;
            for (const char32_t character : part.toUcs4())
                if (isAllowed(character))
                    allowed += QStringView(QChar::fromUcs4(character));
            return allowed;
        };
        const QStringView all(text);
        const QString before = allowedOf(all.first(cursor)), after = allowedOf(all.sliced(cursor));
        cursor = static_cast<int>(before.size());
        text = before + after;
    }

    // What has just been inserted ends at the cursor, so that is where something is too much.
    void removeExcess(QString &text, int &cursor) const {
        const auto boundaries = clusterBoundaries(text);
        const auto count = static_cast<qsizetype>(boundaries.size()) - 1;
        if (!limit || count <= *limit)
            return;
        const auto end = std::ranges::lower_bound(boundaries, cursor);
        const auto begin = end - std::min<std::ptrdiff_t>(count - *limit, end - boundaries.begin());
        text.remove(*begin, *end - *begin);
        cursor = static_cast<int>(*begin);
        if (numberOfClusters(text) > *limit) // there is not that much before the cursor
            text.truncate(clusterBoundaries(text)[static_cast<std::size_t>(*limit)]);
        cursor = std::min(cursor, static_cast<int>(text.size()));
    }

    const QPointer<const QValidator> other_;
};

const LimitingValidator *limitsOf(const QLineEdit &field) {
    return dynamic_cast<const LimitingValidator *>(field.validator());
}

/// Has `change` change the limits, and applies them.
template <class Change>
void changeLimits(QLineEdit &field, const Change &change) {
    if (!limitsOf(field))
        field.setValidator(new LimitingValidator(field));
    const LimitingValidator *limits = limitsOf(field);
    change(const_cast<LimitingValidator &>(*limits)); // the field keeps it, but we made it
    QString text = field.text();
    int cursor = static_cast<int>(text.size());
    limits->validate(text, cursor);
    if (text != field.text())
        field.setText(text);
}

} // namespace

std::optional<qsizetype> qn::maximumCharacters(const QLineEdit &field) {
    const LimitingValidator *limits = limitsOf(field);
    return limits ? limits->limit : std::nullopt;
}

void qn::setMaximumCharacters(QLineEdit &field, std::optional<qsizetype> limit) {
    changeLimits(field, [&](LimitingValidator &limits) {
        limits.limit = limit ? std::optional(std::max<qsizetype>(*limit, 0)) : std::nullopt;
    });
}

void qn::setCharacterTest(QLineEdit &field, std::function<bool(char32_t)> isAllowed) {
    changeLimits(field, [&](LimitingValidator &limits) { limits.isAllowed = std::move(isAllowed); });
}

void qn::setAllowedCharacters(QLineEdit &field, const Ref<NSCharacterSet> &allowed) {
    std::function<bool(char32_t)> isAllowed;
    if (allowed)
        isAllowed = [allowed](char32_t character) {
            return character <= 0xFFFF && allowed->characterIsMember(static_cast<unichar>(character));
        };
    setCharacterTest(field, std::move(isAllowed));
}
