// The styles of the scene and those in files.

#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/gui_style.h"
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
    if (style && !style->is_attached()) {
        auto read = tarn::read_style_file(m_style_library->path_of(*style));
        if (!read)
            return read.status();
        static_cast<StyleState&>(*read.value()).origin = int(style->origin());
        style = m_core->add_style(std::move(read.value()));
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
    if (auto status = tarn::write_style_file(tarn::StyleLibrary::file_of(name), style); !status)
        return status;
    const tarn::UserAction action(journal(), lang(u"保存风格", u"Save Style"));
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
    m_core->remove_style(*style);
}

QString CGuiPlugScene::style_file(const QString& name) const
{
    return tarn::is_file_name(name) ? tarn::StyleLibrary::file_of(name) : QString();
}

void CGuiPlugScene::reset_style()
{
    const tarn::UserAction action(journal(), lang(u"重置风格", u"Reset Style"));
    m_core->InitElements();
    update_all_ctrl_element();
}

void CGuiPlugScene::update_all_ctrl_element()
{
    m_core->look_changed();
    if (m_world)
        m_world->update_all_views();
}
