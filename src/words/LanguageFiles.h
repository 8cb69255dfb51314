#pragma once

// The language files, which add to the built-in texts or replace them: the list of languages and
// one catalog of texts for each. docs/translating.md describes them for people.

#include "words/LanguageCode.h"

#include <string>

namespace Wirefall {

/// Fills the catalog for the language of the setting, and sets that to the one really loaded, its
/// code normalised. The texts of the fallback language lie beneath, so an incomplete translation
/// shows those where it has none of its own. Without usable files the built-in texts show. Every
/// reference to a text or a language that was looked up before is invalid afterwards.
void LoadLocalization(LanguageSetting& setting);

/// Puts the texts of a catalog file over those that the catalog has. `path` is relative to the
/// installed data; false when it leads out of that, and when the file cannot be read.
bool LoadCatalogFile(const std::string& path);

} // namespace Wirefall
