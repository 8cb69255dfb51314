#include "ui/LanguageFiles.h"

#include "ui/Localization.h"

namespace Wirefall {

// This build reads no language files: the built-in texts show, whatever the language.

void LoadLocalization(GameOptions& /*options*/) { LocalizationCatalog.Texts.clear(); }

} // namespace Wirefall
