// The words of the interface in the user's language: gettext catalogues, one text domain a string table.
//
// Catalogues stand in the resource folder: locale/LANGUAGE/LC_MESSAGES/TABLE.mo. A language without catalogue
// falls back to English.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <string>

class NSString;

/// Takes the user's language from the environment. Called once, at start-up, before other threads exist. A
/// locale that the machine does not have is served all the same, as long as there is a catalogue for it.
void NSLocalizationPrepare();

/// The language of the texts, as its catalogue calls it, e.g. "zh_TW".
std::string NSLocalizationLanguage();

/// The text of the key in the table; when the table lacks it, `value`, or the key itself when that is empty.
Ref<NSString> NSLocalizedStringFromTable(const Ref<NSString> &key, const Ref<NSString> &value,
                                         const std::string &table);

/// The text of the key in the table "Localizable", or the key itself.
Ref<NSString> NSLocalizedString(const Ref<NSString> &key);
