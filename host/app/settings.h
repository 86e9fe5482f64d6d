#pragma once

#include "core/language.h"
#include "widgets/theme.h"

#include <QSettings>

#include <optional>

/// What the program remembers from one start to the next, in the host's preset file.
namespace tarn::settings {

QSettings& store();

/// The language chosen by the user; nothing when the system decides.
std::optional<Language> language();
void set_language(std::optional<Language> language);
/// The system's language.
Language system_language();

Theme theme();
void set_theme(Theme theme);

/// Nothing is read or written from here on: for scripts, tests and pictures, which must not depend on one user's habits.
void forget_all();

} // namespace tarn::settings
