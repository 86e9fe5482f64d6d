// The scene's files: packages that are opened, saved, exported, imported and merged.

#include "animation/animation_scene.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "engine/scene_selection.h"
#include "gui_plug_scene.h"
#include "package_reader.h"
#include "package_writer.h"
#include "scene_merge.h"
#include "store/enough_memory.h"
#include "store/in_worker.h"
#include "store/pak_file.h"
#include "tex_path_info.h"

#include <QFileInfo>

using tarn::lang;
using tarn::Status;

namespace {

constexpr double share_of_reading = 0.9; ///< of the work that puts a package in place

class GuiSceneCopy : public tarn::SceneCopy {
public:
    GuiSceneCopy(const tarn::Document& document, tarn::SceneSnapshot content)
        : m_document(document), m_content(std::move(content))
    {
    }
    Status write(const QString& path) const override
    {
        return tarn::save_package(path, m_document, m_content, {}, tarn::ReadOnly::Replace);
    }

private:
    const tarn::Document& m_document;
    tarn::SceneSnapshot m_content;
};

} // namespace

void CGuiPlugScene::clear()
{
    play(false);
    const tarn::UserAction action(journal(), lang(u"清空界面", u"Clear Interface"));
    install(document().empty_scene());
}

Status CGuiPlugScene::save(CPakFile& package, const CSaveOpt& options)
{
    return tarn::with_enough_memory(
        [&] { return tarn::write_package(package, document(), tarn::content_to_save(*m_core, options), options); });
}

Status CGuiPlugScene::write_file(const QString& path, const CSaveOpt& options, bool replace_read_only) const
{
    const tarn::SceneSnapshot copy = tarn::content_to_save(*m_core, options);
    const auto read_only = replace_read_only ? tarn::ReadOnly::Replace : tarn::ReadOnly::Keep;
    const auto write = [&](const tarn::Progress& progress) {
        return tarn::save_package(path, document(), copy, options, read_only, progress);
    };
    return m_world->work(lang(u"正在保存 %1", u"Saving %1").arg(QFileInfo(path).fileName()),
                         [&](const tarn::Progress& progress) { return tarn::in_worker(progress, write); });
}

Status CGuiPlugScene::with_file(const QString& path, const QString& what,
                                const std::function<Status(tarn::SceneSnapshot)>& use) const
{
    return m_world->work(what, [&](const tarn::Progress& progress) -> Status {
        CPakFile package;
        if (auto opened = package.open(path); !opened)
            return opened;
        const CTexPathInfo textures(path, 1);
        auto read = tarn::read_package(package, *m_core, progress.part(0, share_of_reading));
        if (!read)
            return read.status();
        return use(std::move(read.value()));
    });
}

Status CGuiPlugScene::export_to(const QString& path, const CSaveOpt& options)
{
    return write_file(path, options, false);
}

void CGuiPlugScene::install(tarn::SceneSnapshot content)
{
    const tarn::UserAction action(journal());
    document().install(std::move(content));
    m_model.forget_layout();
}

/// After a preview the interface is what it was before; scripts would stay changed.
Status CGuiPlugScene::check_not_playing() const
{
    return m_playing ? Status::error(
               lang(u"请先停止预览，再导入或合并界面。", u"Stop the preview before you import or merge an interface."))
                     : Status();
}

Status CGuiPlugScene::load(const CPakFile& package, const CTexPathInfo&)
{
    if (auto status = check_not_playing(); !status)
        return status;
    return m_world->work(lang(u"正在导入", u"Importing"), [&](const tarn::Progress& progress) -> Status {
        auto content = tarn::read_package(package, *m_core, progress.part(0, share_of_reading));
        if (!content)
            return content.status();
        const tarn::UserAction action(journal(), lang(u"导入界面", u"Import"));
        install(tarn::with_present_world(std::move(content.value()), document()));
        return {};
    });
}

void CGuiPlugScene::new_scene()
{
    clear();
    begin_anew({});
}

/// Nothing goes on that belonged to the scene before; another one may have the same ids.
void CGuiPlugScene::begin_anew(const QString& path)
{
    document().forget_history();
    m_file_name = path;
    m_world->selection().clear();
    m_world->camera() = tarn::OrbitCamera();
    m_animation->unmute_all();
    SetMTFunction(0, 0);
    m_world->broadcast(tarn::ui_full_refresh);
}

void CGuiPlugScene::become(tarn::SceneSnapshot content, const QString& path)
{
    play(false);
    {
        const tarn::RecordingOff off(journal());
        install(std::move(content));
    }
    begin_anew(path);
}

Status CGuiPlugScene::open_scene(const QString& path)
{
    return with_file(path, lang(u"正在打开 %1", u"Opening %1").arg(QFileInfo(path).fileName()),
                     [&](tarn::SceneSnapshot content) -> Status {
                         become(std::move(content), path);
                         return {};
                     });
}

Status CGuiPlugScene::recover_scene(const QString& package, const QString& path)
{
    return with_file(package, lang(u"正在恢复", u"Restoring"), [&](tarn::SceneSnapshot content) -> Status {
        become(std::move(content), path);
        journal().changed_outside();
        return {};
    });
}

Status CGuiPlugScene::save_scene(const QString& path, bool replace_read_only)
{
    auto status = write_file(path, {}, replace_read_only);
    if (status)
        journal().mark_saved();
    return status;
}

std::unique_ptr<tarn::SceneCopy> CGuiPlugScene::copy_scene() const
{
    return std::make_unique<GuiSceneCopy>(document(), tarn::content_to_save(*m_core));
}

Status CGuiPlugScene::check_merge(const QString& path)
{
    if (auto status = check_not_playing(); !status)
        return status;
    return with_file(path, lang(u"正在检查 %1", u"Checking %1").arg(QFileInfo(path).fileName()),
                     [&](const tarn::SceneSnapshot& content) { return document().check_room(content); });
}

Status CGuiPlugScene::on_merge_GUI(const QString& path, const QString& name, bool replace_styles)
{
    if (auto status = check_not_playing(); !status)
        return status;
    return with_file(path, lang(u"正在合并 %1", u"Merging %1").arg(QFileInfo(path).fileName()),
                     [&](tarn::SceneSnapshot content) {
                         const tarn::UserAction action(journal(), lang(u"合并界面", u"Merge"));
                         return tarn::merge_content(*this, std::move(content), name, replace_styles);
                     });
}
