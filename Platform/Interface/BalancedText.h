// Lines of about equal length, so that none is left with a single word or character.
#pragma once

#include <concepts>

/// The least width, from `narrowest` to `widest`, at which a text needs no more height than at `widest`.
/// `heightForWidth` never grows with the width.
int balancedWidth(int narrowest, int widest, std::invocable<int> auto heightForWidth) {
    const int height = heightForWidth(widest);
    int tooNarrow = narrowest - 1;
    while (widest - tooNarrow > 1) {
        const int middle = (tooNarrow + widest) / 2;
        (heightForWidth(middle) > height ? tooNarrow : widest) = middle;
    }
    return widest;
}
