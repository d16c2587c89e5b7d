// Breaks text into lines of about equal length, so that no line has a single word.
#pragma once

#include <concepts>

/// The least width, from `narrowest` to `widest`, at which a text needs no more height than at `widest`.
/// `heightForWidth` must not grow with the width.
int balancedWidth(int narrowest, int widest, std::invocable<int> auto heightForWidth) {
    const int height = heightForWidth(widest);
    int tooNarrow = narrowest - 1;
    while (widest - tooNarrow > 1) {
        const int middle = (tooNarrow + widest) / 2;
        (heightForWidth(middle) > height ? tooNarrow : widest) = middle;
    }
    return widest;
}
