#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Fading.h"

#include "Frameworks/QNCategoriesPro/UIKit/QWidget/Attachment.h"
#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Decoration.h"

#include <QVariantAnimation>
#include <QWidget>

#include <algorithm>
#include <limits>

namespace {

class Fade final : public QVariantAnimation {
public:
    Fade(QWidget &widget, qreal to, std::chrono::milliseconds duration, std::function<void()> then)
        : QVariantAnimation(&widget), widget_(widget) {
        constexpr std::chrono::milliseconds::rep most = std::numeric_limits<int>::max();
        setDuration(static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(duration.count(), 0, most)));
        setEasingCurve(QEasingCurve::InOutQuad);
        setStartValue(qn::opacity(widget));
        setEndValue(to);
        connect(this, &QAbstractAnimation::finished, this, [&widget, to, done = std::move(then)] {
            if (to == 0) {
                widget.hide();
                qn::setOpacity(widget, 1);
            }
            if (const auto kept = done) // as it may delete the widget, and with it this
                kept();
        });
    }

protected:
    void updateCurrentValue(const QVariant &value) override { qn::setOpacity(widget_, value.toReal()); }

private:
    QWidget &widget_;
};

void fade(QWidget &widget, qreal to, std::chrono::milliseconds duration, std::function<void()> then) {
    if (auto *earlier = qn::attachmentOf<Fade>(widget)) {
        earlier->setParent(nullptr);
        earlier->stop(); // which deletes it, but not at once: it may be calling its `then`
    }
    (new Fade(widget, to, duration, std::move(then)))->start(QAbstractAnimation::DeleteWhenStopped);
}

} // namespace

void qn::fadeIn(QWidget &widget, std::chrono::milliseconds duration, std::function<void()> then) {
    if (widget.isHidden()) {
        setOpacity(widget, 0);
        widget.show();
    }
    fade(widget, 1, duration, std::move(then));
}

void qn::fadeOut(QWidget &widget, std::chrono::milliseconds duration, std::function<void()> then) {
    fade(widget, 0, widget.isHidden() ? std::chrono::milliseconds(0) : duration, std::move(then));
}
