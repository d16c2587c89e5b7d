// What may be typed into a text field: how many characters, and which.
//
//     qn::setMaximumCharacters(pin, 4);
//     qn::setAllowedCharacters(pin, NSCharacterSet::characterSetWithCharactersInString(u"0123456789"));
//
// What is not allowed is left out, and what is too much is cut off where it is inserted, whether it is typed,
// pasted or set; the rest is inserted. What an input method is composing is left alone until it is committed.
// A text that is there already is cut at once. After an insertion that was cut, typing cannot be undone.
//
// Both have the field use a QValidator of ours, which asks the one that the field had as well; setting
// another one ends the limits. Time grows with the length of the text. Threads: the main thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <QtGlobal>

#include <functional>
#include <optional>

#pragma GCC visibility push(default)

class NSCharacterSet;
class QLineEdit;

namespace qn {

/// In characters as people see them, which are grapheme clusters: a letter with its accents or a flag is one.
/// None for a field without limit. Unlike `maxLength`, which counts UTF-16 units and may cut such a character
/// into parts.
std::optional<qsizetype> maximumCharacters(const QLineEdit &field);
/// A limit below 0 counts as 0.
void setMaximumCharacters(QLineEdit &field, std::optional<qsizetype> limit);

/// None allows all characters; those beyond U+FFFF are in no set.
void setAllowedCharacters(QLineEdit &field, const Ref<NSCharacterSet> &allowed);
/// The same by a function, which is asked for every code point of a text; a null function allows all.
void setCharacterTest(QLineEdit &field, std::function<bool(char32_t)> isAllowed);

} // namespace qn

#pragma GCC visibility pop
