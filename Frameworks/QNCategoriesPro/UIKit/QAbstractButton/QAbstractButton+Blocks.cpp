#include "Frameworks/QNCategoriesPro/UIKit/QAbstractButton/QAbstractButton+Blocks.h"

#include "Frameworks/QNCategoriesPro/UIKit/QWidget/Attachment.h"
#include "Platform/Runtime/Object/NSException.h"

#include <QAbstractButton>

namespace {

/// What the blocks of a button are connected to: they go when it goes.
struct Blocks final : QObject {
    using QObject::QObject;
};

Blocks *blocksOf(QAbstractButton &button) {
    auto *blocks = qn::attachmentOf<Blocks>(button);
    return blocks ? blocks : new Blocks(&button);
}

} // namespace

QMetaObject::Connection qn::onClick(QAbstractButton &button, std::function<void()> block) {
    runtime::checkBlock("qn::onClick", block);
    return QObject::connect(&button, &QAbstractButton::clicked, blocksOf(button), std::move(block));
}

QMetaObject::Connection qn::onToggle(QAbstractButton &button, std::function<void(bool)> block) {
    runtime::checkBlock("qn::onToggle", block);
    return QObject::connect(&button, &QAbstractButton::toggled, blocksOf(button), std::move(block));
}

void qn::removeBlocks(QAbstractButton &button) {
    delete attachmentOf<Blocks>(button);
}
