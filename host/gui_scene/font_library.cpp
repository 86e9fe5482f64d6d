#include "font_library.h"

#include "core/authored.h"
#include "core/field.h"
#include "core/language.h"
#include "gui_core/control_state.h"
#include "gui_core/gui_core.h"
#include "gui_core/interface_font.h"
#include "gui_core/menu_state.h"
#include "gui_core/style_state.h"
#include "gui_core/texture_name.h"
#include "store/pak_rules.h"
#include "store/plain_file.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QRawFont>

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>

namespace tarn {

namespace {

constexpr double any_size = 16; ///< pixels

/// Calls `visit` with each attribute that names families and is not as usual, and its value.
template <class Visit>
void each_font_value(const ObjectState& state, Visit visit)
{
    for (const FieldKey key :
         {key<&StyleState::fonts>, key<&ControlExtras::font_family>, key<&MenuState::font_family>}) {
        const FieldBase* field = state.fields().find(key);
        if (field && !field->is_default(state))
            visit(*field, field->get(state));
    }
}

bool is_same(const QByteArray& a, const QByteArray& b)
{
    return (a.constData() == b.constData() && a.size() == b.size()) || a == b;
}

/// Those that the program knows without the fonts that were loaded from the package.
QStringList families_beside(std::initializer_list<const std::vector<FontLibrary::Font>*> loaded)
{
    QStringList families = QFontDatabase::families();
    for (const auto* fonts : loaded)
        for (const FontLibrary::Font& font : *fonts)
            if (font.id >= 0)
                families.removeIf([&](const QString& family) { return font.families.contains(family); });
    return families;
}

} // namespace

QString font_entry(const QString& name)
{
    return QStringLiteral("fonts/") + name;
}

bool is_font_entry(const QString& entry)
{
    return entry.startsWith(font_entry({}));
}

QStringList font_families_of(const ObjectState& state)
{
    QStringList families;
    each_font_value(state, [&](const FieldBase&, const Value& value) {
        if (const auto* by_owner = std::get_if<TextMap>(&value))
            families += by_owner->values();
        else
            families.append(std::get<QString>(value));
    });
    families.removeAll(QString());
    return families;
}

void forget_font_families(ModelObject& object, const QStringList& families)
{
    each_font_value(Authored::state(object), [&](const FieldBase& field, const Value& value) {
        const auto is_one = [&](const QString& family) { return families.contains(family, Qt::CaseInsensitive); };
        Value kept = value;
        if (auto* by_owner = std::get_if<TextMap>(&kept))
            by_owner->removeIf([&](auto family) { return is_one(family.value()); });
        else if (is_one(std::get<QString>(kept)))
            kept = QString();
        if (!(kept == value))
            (void)object.set_property(field, kept);
    });
}

QSet<QString> named_font_families(const Document& document)
{
    QSet<QString> families;
    for (const ModelObject* object : document.objects())
        for (const QString& family : font_families_of(Authored::state(*object)))
            families.insert(family.toCaseFolded());
    return families;
}

bool has_fonts()
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance());
}

bool has_font_family(const QString& family)
{
    return !has_fonts() || QFontDatabase::hasFamily(family);
}

QString drawn_font_family(const QString& family)
{
    return QFontInfo(interface_font(default_font_size, false, family)).family();
}

FontLibrary::FontLibrary(CGuiCore& core) : m_core(core)
{
    m_core.document().changes().add_listener(this);
}

FontLibrary::~FontLibrary()
{
    m_core.document().changes().remove_listener(this);
    for (const Font& font : m_fonts)
        if (font.id >= 0 && has_fonts())
            QFontDatabase::removeApplicationFont(font.id);
    fonts_changed();
}

void FontLibrary::model_changed(const ModelChange&)
{
    follow();
}

const std::vector<FontLibrary::Font>& FontLibrary::fonts()
{
    follow();
    return m_fonts;
}

const FontLibrary::Font* FontLibrary::find(const QString& family)
{
    const auto& all = fonts();
    const auto found = std::ranges::find_if(
        all, [&](const Font& font) { return font.families.contains(family, Qt::CaseInsensitive); });
    return found == all.end() ? nullptr : &*found;
}

bool FontLibrary::is_named(const Font& font, const QSet<QString>& named)
{
    return std::ranges::any_of(font.families,
                               [&](const QString& family) { return named.contains(family.toCaseFolded()); });
}

FontNotice FontLibrary::notice(const Font& font)
{
    return font_notice(QRawFont(font.content, any_size).fontTable("name"));
}

FontLibrary::Cut FontLibrary::cut(const Font& font)
{
    const QRawFont raw(font.content, any_size);
    return {.bold = raw.weight() >= QFont::DemiBold, .italic = raw.style() != QFont::StyleNormal};
}

Status FontLibrary::check(const QByteArray& content)
{
    if (content.size() > largest_file)
        return Status::error(lang(u"字体文件过大（最大 %1 MB）。", u"The font is too large (up to %1 MB).")
                                 .arg(largest_file / (1024 * 1024)));
    if (!has_fonts() || !QRawFont(content, any_size).isValid())
        return Status::error(lang(u"文件不是可用的字体。", u"The file is no font that can be used."));
    return {};
}

Result<QString> FontLibrary::take_file(const QString& path)
{
    const auto content = read_plain_file(path, largest_file);
    const auto taken = content ? take(QFileInfo(path).fileName(), content.value()) : Result<QString>(content.status());
    if (taken)
        return taken;
    return Status::error(
        lang(u"无法使用字体 %1：%2", u"The font %1 cannot be used: %2").arg(path, taken.status().message()));
}

Result<QString> FontLibrary::take(const QString& name, const QByteArray& content)
{
    if (auto status = check(content); !status)
        return status;
    const auto known = [&]() -> const Font* {
        const auto& all = fonts();
        const auto found = std::ranges::find_if(all, [&](const Font& font) { return is_same(font.content, content); });
        return found == all.end() ? nullptr : &*found;
    };
    if (!known()) {
        if (int(m_fonts.size()) >= most_fonts)
            return Status::error(
                lang(u"文件包中的字体过多（最多 %1 个）。", u"There are too many fonts in the package (at most %1).")
                    .arg(most_fonts));
        QString entry = font_entry(name);
        if (!check_entry_name(entry))
            entry = font_entry(QStringLiteral("font.ttf"));
        const auto& files = m_core.document().files();
        const auto& damaged = m_core.document().state().damaged;
        const auto is_free = [&](const QString& free) { return !files.contains(free) && !damaged.contains(free); };
        if (!is_free(entry))
            entry = free_picture_name(entry, is_free);
        m_core.document().edit_files([&](auto& held) { held.insert(entry, content); });
    }
    const Font* font = known();
    if (!font || font->families.isEmpty())
        return Status::error(lang(u"文件不是可用的字体。", u"The file is no font that can be used."));
    return font->families.front();
}

void FontLibrary::drop_unnamed(const QStringList& entries)
{
    const QSet<QString> named = named_font_families(m_core.document());
    QStringList unnamed;
    for (const Font& font : fonts())
        if (entries.contains(font.entry) && !font.families.isEmpty() && !is_named(font, named))
            unnamed.append(font.entry);
    for (const QString& entry : std::as_const(unnamed))
        remove(entry);
}

void FontLibrary::remove(const QString& entry)
{
    if (m_core.document().files().contains(entry))
        m_core.document().edit_files([&](auto& held) { held.remove(entry); });
    follow();
}

void FontLibrary::load(Font& font, const QStringList& of_machine)
{
    if (!check(font.content))
        return;
    font.id = QFontDatabase::addApplicationFontFromData(font.content);
    if (font.id < 0)
        return;
    font.families = QFontDatabase::applicationFontFamilies(font.id);
    const auto is_known = [&](const QString& family) { return of_machine.contains(family, Qt::CaseInsensitive); };
    if (std::ranges::any_of(font.families, is_known))
        QFontDatabase::removeApplicationFont(std::exchange(font.id, -1));
}

bool FontLibrary::is_current() const
{
    const auto& files = m_core.document().files();
    auto file = files.lowerBound(font_entry({}));
    for (const Font& font : m_fonts) {
        if (file == files.end() || file.key() != font.entry || !is_same(file.value(), font.content))
            return false;
        ++file;
    }
    return file == files.end() || !is_font_entry(file.key());
}

/// Fonts that stay are not loaded anew.
void FontLibrary::follow()
{
    if (is_current())
        return;
    const auto& files = m_core.document().files();
    std::vector<Font> now;
    std::vector<Font> before = std::move(m_fonts);
    std::optional<QStringList> of_machine; // Listing them takes its time, and fonts seldom come.
    for (auto file = files.lowerBound(font_entry({})); file != files.end() && is_font_entry(file.key()); ++file) {
        const auto known = std::ranges::find_if(
            before, [&](const Font& font) { return font.entry == file.key() && is_same(font.content, file.value()); });
        if (known != before.end()) {
            now.push_back(std::move(*known));
            before.erase(known);
            continue;
        }
        now.push_back({file.key(), file.value(), {}, -1});
        if (!has_fonts() || now.size() > std::size_t(most_fonts))
            continue;
        if (!of_machine)
            of_machine = families_beside({&before, &now});
        load(now.back(), *of_machine);
    }
    for (const Font& font : before)
        if (font.id >= 0)
            QFontDatabase::removeApplicationFont(font.id);
    m_fonts = std::move(now);
    fonts_changed();
    m_core.look_changed();
}

FontRelease::FontRelease(CGuiCore& core, FontLibrary& library) : m_core(core), m_library(library)
{
    if (!m_library.fonts().empty())
        m_named = named_font_families(m_core.document());
}

FontRelease::~FontRelease()
{
    if (m_named.isEmpty())
        return;
    const QSet<QString> still = named_font_families(m_core.document());
    QStringList gone;
    for (const FontLibrary::Font& font : m_library.fonts())
        if (FontLibrary::is_named(font, m_named) && !FontLibrary::is_named(font, still))
            gone.append(font.entry);
    for (const QString& entry : std::as_const(gone))
        m_library.remove(entry);
}

} // namespace tarn
