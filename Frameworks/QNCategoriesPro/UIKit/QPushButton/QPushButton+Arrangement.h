// Where the image of a push button is: beside its title, above or below it.
//
//     button.setIcon(printer);
//     qn::setArrangement(button, {.image = qn::ImagePlace::above, .spacing = 8});
//
// The size of the image is the button's `iconSize`. Image and title are centred together, a title that has no
// room is elided at its end, and without title or image the spacing is left out. The button asks for the
// size that it needs then. An arranged button has a style of its own over the application's, and keeps that
// when the application gets another style. Threads: the main thread.
#pragma once

#pragma GCC visibility push(default)

class QPushButton;

namespace qn {

/// Of the image, seen from the title.
enum class ImagePlace {
    leading,  ///< on the left, or on the right in right-to-left layouts
    trailing, ///< on the other side
    above,
    below,
};

struct Arrangement {
    ImagePlace image = ImagePlace::leading;
    int spacing = 4; ///< between image and title, in logical pixels, 0 or more

    bool operator==(const Arrangement &) const = default;
};

Arrangement arrangement(const QPushButton &button);
/// A spacing below 0 counts as 0.
void setArrangement(QPushButton &button, const Arrangement &arrangement);

} // namespace qn

#pragma GCC visibility pop
