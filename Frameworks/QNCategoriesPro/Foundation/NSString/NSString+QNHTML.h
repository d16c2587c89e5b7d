// Conversions between plain text and HTML. A text of none gives none. Any thread. The time is linear in the
// length of the text, also for hostile texts, except for `stringByLinkifyingURLs`, which gives up instead.
//
// White space here is blank, tab, LF, CR, form feed, U+0085, U+2028 and U+2029; all but the first two are
// line breaks.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSString/HTMLEscapeMap.h"
#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

namespace qn {

/// The text with every code unit of the table replaced by its escape text. The table has to be sorted by code
/// unit; `size` is its size in bytes. With `escapingUnicode` every other unit from 128 on is written by
/// number ("&#233;"), each half of a surrogate pair on its own.
Ref<NSString> stringByEscapingHTMLUsingTable(const Ref<NSString> &text, const HTMLEscape *table,
                                             NSUInteger size, bool escapingUnicode);
/// By the map of special characters only: "a<é" becomes "a&lt;é".
Ref<NSString> stringByEscapingForHTML(const Ref<NSString> &text);
/// By the whole map, the rest by number, so that only ASCII is left: "a<é激" becomes "a&lt;&eacute;&#28608;".
Ref<NSString> stringByEscapingForAsciiHTML(const Ref<NSString> &text);
/// The text with every reference of 4 to 10 units, "&" and ";" included, replaced by its code unit, once:
/// "&amp;lt;" becomes "&lt;". A reference has a name of the whole map, or "#" and decimal or "#x" and
/// hexadecimal digits for 1 to 65534. Everything else stays.
Ref<NSString> stringByUnescapingFromHTML(const Ref<NSString> &text);

/// The text without tags, comments and scripts, unescaped. A run of white space becomes one blank, and none
/// at either end; a closing tag becomes a blank, also at the end, but not that of an inline element ("</b>").
Ref<NSString> stringByConvertingHTMLToPlainText(const Ref<NSString> &text);
/// The text with each "<…>" replaced by a blank, or by nothing for "a", "span", "strong" and "em" without
/// attributes; then as by `stringByRemovingNewLinesAndWhitespace`. A text without "<" is returned unchanged.
Ref<NSString> stringByStrippingTags(const Ref<NSString> &text);
/// The text with every run of white space replaced by one blank, and none at either end.
Ref<NSString> stringByRemovingNewLinesAndWhitespace(const Ref<NSString> &text);
/// The text with a "<br />" for each line break. CR LF at the beginning of a run of line breaks counts as
/// one; after other line breaks it counts as two.
Ref<NSString> stringWithNewLinesAsBRs(const Ref<NSString> &text);
/// The text with every web address in a link of the class "linkified", except directly behind `="`. The text
/// itself when looking for addresses takes too long.
Ref<NSString> stringByLinkifyingURLs(const Ref<NSString> &text);

} // namespace qn

#pragma GCC visibility pop
