// The styles of the scene and those in files.

#include "core/language.h"
#include "engine/base_world.h"
#include "font_library.h"
#include "gui_core/gui_style.h"
#include "gui_core/style_look.h"
#include "gui_plug_scene.h"
#include "store/filefun.h"
#include "style_file.h"
#include "style_library.h"

#include <algorithm>

using tarn::lang;
using tarn::Status;
using tarn::StyleOrigin;
using tarn::StyleState;

namespace {

/// What the file of a style has is the same for all that are lent by it.
bool is_lent_as(const CGuiStyle& style, const CGuiStyle& wanted)
{
    return style.origin() == wanted.origin() && style.name() == wanted.name();
}

/// Those of the package that the style names, by their names there.
QMap<QString, QByteArray> fonts_of(tarn::FontLibrary& library, const StyleState& style)
{
    QMap<QString, QByteArray> fonts;
    for (const QString& family : tarn::font_families_of(style))
        if (const auto* font = library.find(family))
            fonts.insert(font->entry.mid(tarn::font_entry({}).size()), font->content);
    return fonts;
}

/// Answers the entries that are new. What is no font is told as a missing one.
QStringList take_fonts(tarn::FontLibrary& library, const QMap<QString, QByteArray>& fonts)
{
    const auto entries = [&] {
        QStringList all;
        for (const tarn::FontLibrary::Font& font : library.fonts())
            all.append(font.entry);
        return all;
    };
    const QStringList before = entries();
    for (auto font = fonts.begin(); font != fonts.end(); ++font)
        (void)library.take(font.key(), font.value());
    QStringList came = entries();
    came.removeIf([&](const QString& entry) { return before.contains(entry); });
    return came;
}

} // namespace

QList<CGuiStyle*> CGuiPlugScene::styles()
{
    QList<CGuiStyle*> all;
    const auto kept = m_core->GetStyles();
    std::copy_if(kept.begin(), kept.end(), std::back_inserter(all),
                 [](const CGuiStyle* style) { return !style->name().isEmpty(); });
    for (CGuiStyle* style : m_style_library->styles()) {
        // The file of a style that the scene keeps, or wears, is no other style.
        const bool is_shown = std::any_of(all.begin(), all.end(), [&](const CGuiStyle* shown) {
            return is_lent_as(*shown, *style)
                || (shown->name() == style->name() && shown->origin() == StyleOrigin::Scene
                    && style->origin() == StyleOrigin::User);
        });
        if (!is_shown)
            all.append(style);
    }
    return all;
}

Status CGuiPlugScene::ChangeStyle(CGuiStyle* style)
{
    const tarn::UserAction action(journal(), lang(u"应用风格", u"Apply Style"));
    const tarn::FontRelease release(*m_core, *m_fonts);
    if (style && !style->is_attached()) {
        auto read = tarn::read_style_file(m_style_library->path_of(*style));
        if (!read)
            return read.status();
        static_cast<StyleState&>(*read.value().state).origin = int(style->origin());
        const QStringList came = take_fonts(*m_fonts, read.value().fonts);
        style = m_core->add_style(std::move(read.value().state));
        m_fonts->drop_unnamed(came);
    }
    m_core->set_scene_style(style);
    return {};
}

Status CGuiPlugScene::save_current_style_as(const QString& name)
{
    if (!tarn::is_file_name(name))
        return Status::error(lang(u"\"%1\" 不能用作文件名。", u"\"%1\" cannot be the name of a file.").arg(name));
    tarn::StatePtr state = m_core->flat_style();
    auto& style = static_cast<StyleState&>(*state);
    style.name = name;
    filefun::create_path(tarn::StyleLibrary::user_folder());
    if (auto status = tarn::write_style_file(tarn::StyleLibrary::file_of(name), style, fonts_of(*m_fonts, style));
        !status)
        return status;
    const tarn::UserAction action(journal(), lang(u"保存风格", u"Save Style"));
    const tarn::FontRelease release(*m_core, *m_fonts);
    CGuiStyle* replaced = m_core->find_style(name);
    if (CGuiStyle* saved = m_core->add_style(std::move(state)))
        m_core->set_scene_style(saved);
    if (replaced)
        m_core->remove_style(*replaced);
    return {};
}

bool CGuiPlugScene::has_style(const QString& name) const
{
    return m_core->find_style(name) || (tarn::is_file_name(name) && filefun::file_exist(style_file(name)));
}

void CGuiPlugScene::remove_style(CGuiStyle* style)
{
    if (!style || !style->is_attached())
        return;
    const tarn::UserAction action(journal(), lang(u"删除风格", u"Remove Style"));
    const tarn::FontRelease release(*m_core, *m_fonts);
    m_core->remove_style(*style);
}

QString CGuiPlugScene::style_file(const QString& name) const
{
    return tarn::is_file_name(name) ? tarn::StyleLibrary::file_of(name) : QString();
}

void CGuiPlugScene::reset_style()
{
    const tarn::UserAction action(journal(), lang(u"重置风格", u"Reset Style"));
    const tarn::FontRelease release(*m_core, *m_fonts);
    m_core->InitElements();
    update_all_ctrl_element();
}

void CGuiPlugScene::set_look_font(int owner, const QString& family)
{
    const tarn::UserAction action(journal(), lang(u"设置字体", u"Set Font"));
    const tarn::FontRelease release(*m_core, *m_fonts);
    m_core->set_look_font(owner, family);
}

Status CGuiPlugScene::take_look_font(int owner, const QString& path)
{
    const tarn::UserAction action(journal(), lang(u"添加字体", u"Add Font"));
    const auto family = m_fonts->take_file(path);
    if (!family)
        return family.status();
    set_look_font(owner, family.value());
    // The author chose these letters: a family's regular ones would be others.
    tarn::FontStyle style = m_core->look().font_style(owner);
    const tarn::FontLibrary::Cut cut = tarn::FontLibrary::cut(*m_fonts->find(family.value()));
    if (style.bold != cut.bold || style.italic != cut.italic) {
        style.bold = cut.bold;
        style.italic = cut.italic;
        m_core->set_look_font_style(owner, style);
    }
    return {};
}

void CGuiPlugScene::remove_font(const QString& entry)
{
    const auto& all = m_fonts->fonts();
    const auto font = std::ranges::find(all, entry, &tarn::FontLibrary::Font::entry);
    if (font == all.end())
        return;
    const QStringList families = font->families;
    const QString gone = entry; // It may be the font's own, which moves when the package changes.
    const tarn::UserAction action(journal(), lang(u"移除字体", u"Remove Font"));
    for (tarn::ModelObject* object : document().objects())
        tarn::forget_font_families(*object, families);
    m_fonts->remove(gone);
}

void CGuiPlugScene::update_all_ctrl_element()
{
    m_core->look_changed();
}
