// What a text field shows, as texts and ranges of the platform. Ranges count UTF-16 units, as NSString does;
// none stands for an empty text, and is never returned. Threads: the main thread.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/Ref.h"

#pragma GCC visibility push(default)

class NSString;
class QLineEdit;

namespace qn {

Ref<NSString> text(const QLineEdit &field);
/// The limits of the field apply (`setMaximumCharacters`). Moves the cursor to the end.
void setText(QLineEdit &field, const Ref<NSString> &text);

/// What an empty field shows.
Ref<NSString> placeholder(const QLineEdit &field);
void setPlaceholder(QLineEdit &field, const Ref<NSString> &placeholder);

/// What is selected; an empty range at the cursor when nothing is.
NSRange selectedRange(const QLineEdit &field);
/// Of a range, as much as is in the text, and the grapheme clusters that it cuts as a whole. The cursor is at
/// its end. An empty range only moves the cursor, in front of the cluster it is in.
void setSelectedRange(QLineEdit &field, NSRange range);

} // namespace qn

#pragma GCC visibility pop
