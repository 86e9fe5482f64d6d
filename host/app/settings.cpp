#include "settings.h"

#include "core/appinfo.h"

#include <QDir>
#include <QLocale>
#include <QTemporaryDir>

#include <memory>

namespace tarn::settings {

namespace {

std::unique_ptr<QTemporaryDir> scratch;
std::unique_ptr<QSettings> current;

constexpr const char* language_key = "language";
constexpr const char* theme_key = "theme";

} // namespace

QSettings& store()
{
    if (!current)
        current = std::make_unique<QSettings>(appinfo::get_preset_ini(), QSettings::IniFormat);
    return *current;
}

void forget_all()
{
    scratch = std::make_unique<QTemporaryDir>();
    current = std::make_unique<QSettings>(scratch->filePath(QStringLiteral("preset.ini")), QSettings::IniFormat);
}

std::optional<Language> language()
{
    const QString name = store().value(QLatin1String(language_key)).toString();
    if (name == QLatin1String("zh"))
        return Language::Chinese;
    return name == QLatin1String("en") ? std::optional(Language::English) : std::nullopt;
}

void set_language(std::optional<Language> language)
{
    if (!language)
        store().remove(QLatin1String(language_key));
    else
        store().setValue(QLatin1String(language_key),
                         *language == Language::Chinese ? QStringLiteral("zh") : QStringLiteral("en"));
}

Language system_language()
{
    return QLocale::system().language() == QLocale::Chinese ? Language::Chinese : Language::English;
}

Theme theme()
{
    const QString name = store().value(QLatin1String(theme_key)).toString();
    return name == QLatin1String("dark") ? Theme::Dark : name == QLatin1String("light") ? Theme::Light : Theme::System;
}

void set_theme(Theme theme)
{
    static constexpr const char* names[] = {"system", "light", "dark"};
    store().setValue(QLatin1String(theme_key), QLatin1String(names[static_cast<int>(theme)]));
}

} // namespace tarn::settings
