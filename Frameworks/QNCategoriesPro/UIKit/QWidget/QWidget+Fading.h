// Widgets that appear and disappear little by little.
//
//     qn::fadeOut(note, 250ms, [&] { showNext(); });
//
// A fade begins with the opacity that the widget has, and takes the place of one under way, whose `then` is
// not called. It ends with the widget. Fades are Qt's animations and run by its animation time, which a
// QAnimationDriver replaces. Threads: the main thread.
#pragma once

#include <chrono>
#include <functional>

#pragma GCC visibility push(default)

class QWidget;

namespace qn {

inline constexpr std::chrono::milliseconds usualFade{250};

/// Shows the widget, from transparent on if it was hidden, and calls `then`, if there is one, when it is
/// fully opaque. At once if the duration is not above 0.
void fadeIn(QWidget &widget, std::chrono::milliseconds duration = usualFade, std::function<void()> then = {});
/// Hides the widget once it is transparent, gives it back its full opacity for the next time that it is
/// shown, and calls `then`. Only that for a widget that is hidden.
void fadeOut(QWidget &widget, std::chrono::milliseconds duration = usualFade,
             std::function<void()> then = {});

} // namespace qn

#pragma GCC visibility pop
