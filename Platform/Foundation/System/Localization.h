// The texts of the interface in the user's language, from gettext catalogues: one text domain per string
// table.
//
// Catalogues are resources (NSBundle.h): locale/LANGUAGE/LC_MESSAGES/TABLE.mo. A language without a catalogue
// falls back to English. Texts may be looked up on any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <string>

#pragma GCC visibility push(default)

class NSString;

/// Takes the user's language from the environment, whose LANGUAGE it sets. To be called once, at start-up,
/// before other threads exist. A language with a catalogue is used even if the machine lacks its locale.
void NSLocalizationPrepare();

/// The language of the texts, from the header of the catalogue, e.g. "zh_TW".
std::string NSLocalizationLanguage();

/// The text of the key in the table. If the table lacks it: `value`, or the key itself when that is empty or
/// none.
Ref<NSString> NSLocalizedStringFromTable(const Ref<NSString> &key, const Ref<NSString> &value,
                                         const std::string &table);

/// The text of the key in the table "Localizable", or the key itself.
Ref<NSString> NSLocalizedString(const Ref<NSString> &key);

#pragma GCC visibility pop
