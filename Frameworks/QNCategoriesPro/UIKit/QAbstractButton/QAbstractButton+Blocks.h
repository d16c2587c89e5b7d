// Blocks as the actions of buttons.
//
//     qn::onClick(*confirm, [this] { write(); });
//
// Blocks are called in the order in which they were added, and go with the button. They may remove themselves
// and delete the button later (`deleteLater`), but must not throw. A block of none raises
// NSInvalidArgumentException. Threads: the main thread.
#pragma once

#include <QMetaObject>

#include <functional>

#pragma GCC visibility push(default)

class QAbstractButton;

namespace qn {

/// Called when the button is clicked, by mouse, keyboard or `click`. QObject::disconnect removes the block,
/// given what is returned.
QMetaObject::Connection onClick(QAbstractButton &button, std::function<void()> block);
/// Called with the new state when a button that can be checked is, or no longer is.
QMetaObject::Connection onToggle(QAbstractButton &button, std::function<void(bool isChecked)> block);

/// Removes all blocks of the two functions above, but no other connections.
void removeBlocks(QAbstractButton &button);

} // namespace qn

#pragma GCC visibility pop
