#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Decoration.h"

#include "Frameworks/QNCategoriesPro/UIKit/QWidget/DecorationEffect.h"
#include "Platform/Runtime/Object/NSException.h"

#include <QWidget>

#include <algorithm>

namespace {

using qn::DecorationEffect;

DecorationEffect *effectOf(const QWidget &widget) {
    return dynamic_cast<DecorationEffect *>(widget.graphicsEffect());
}

/// Has `change` change the effect, which the widget has only as long as it does something.
template <class Change>
void changeEffect(QWidget &widget, const Change &change) {
    DecorationEffect *effect = effectOf(widget);
    if (!effect)
        widget.setGraphicsEffect(effect = new DecorationEffect);
    change(*effect);
    if (effect->isIdle())
        widget.setGraphicsEffect(nullptr);
}

} // namespace

qn::Decoration qn::decoration(const QWidget &widget) {
    const DecorationEffect *effect = effectOf(widget);
    return effect ? effect->decoration() : Decoration();
}

void qn::setDecoration(QWidget &widget, const Decoration &decoration) {
    if (widget.isWindow())
        throw NSException(NSInvalidArgumentException,
                          "qn::setDecoration: a window has no decoration of ours");
    changeEffect(widget, [&](DecorationEffect &effect) { effect.setDecoration(decoration); });
}

qreal qn::opacity(const QWidget &widget) {
    const DecorationEffect *effect = effectOf(widget);
    return widget.isWindow() ? widget.windowOpacity() : effect ? effect->opacity() : 1;
}

void qn::setOpacity(QWidget &widget, qreal opacity) {
    const qreal usable = opacity > 0 ? std::min(opacity, 1.0) : 0;
    if (widget.isWindow())
        widget.setWindowOpacity(usable);
    else
        changeEffect(widget, [=](DecorationEffect &effect) { effect.setOpacity(usable); });
}
