#include "font_choices.h"

#include "core/language.h"
#include "gui_core/interface_font.h"
#include "gui_scene/font_library.h"
#include "gui_scene/gui_plug_scene.h"

#include <QFontDatabase>

#include <utility>

namespace tarn {

namespace {

/// Listing them takes its time, and pages ask with every change.
const QStringList& all_families()
{
    static quint64 known = 0;
    static QStringList families;
    if (std::exchange(known, fonts_revision()) == fonts_revision())
        return families;
    families = QFontDatabase::families();
    families.removeIf([](const QString& family) { return QFontDatabase::isPrivateFamily(family); });
    return families;
}

} // namespace

QStringList package_font_families(CGuiPlugScene& scene)
{
    QStringList families;
    for (const FontLibrary::Font& font : scene.fonts().fonts())
        families += font.families;
    families.removeDuplicates();
    return families;
}

QStringList system_font_families(CGuiPlugScene& scene)
{
    const QStringList of_package = package_font_families(scene);
    QStringList families = all_families();
    families.removeIf([&](const QString& family) { return of_package.contains(family); });
    return families;
}

std::vector<ChoiceItem> font_choices(CGuiPlugScene& scene, const ModelObject&)
{
    std::vector<ChoiceItem> items{{QString(), lang(u"（风格字体）", u"(The style's)")}};
    for (const QString& family : package_font_families(scene))
        items.push_back({family, lang(u"%1（文件包）", u"%1 (package)").arg(family)});
    for (const QString& family : system_font_families(scene))
        items.push_back({family, family});
    return items;
}

} // namespace tarn
