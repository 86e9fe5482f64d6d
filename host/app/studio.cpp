#include "studio.h"

#include "autosave.h"
#include "core/journal.h"
#include "core/language.h"
#include "engine/scene_plug.h"
#include "frame/base_plug_ui.h"
#include "settings.h"
#include "store/inifile.h"

#include <QDir>
#include <QFileInfo>

using tarn::lang;
using tarn::Status;

namespace {

constexpr const char* recent_key = "recent_files";
constexpr int recent_limit = 10;
constexpr auto tick_time = std::chrono::milliseconds(10); ///< of the scene's clock while it runs

} // namespace

Studio::Studio(QObject* parent) : QObject(parent)
{
    m_ticks.setInterval(tick_time);
    m_ticks.setTimerType(Qt::PreciseTimer);
    connect(&m_ticks, &QTimer::timeout, this, &Studio::tick);
}

Studio::~Studio()
{
    stop();
}

QStringList Studio::load_plug_ins(const QString& folder, Windows windows)
{
    QStringList failures;
    if (windows == Windows::All) {
        for (const tarn::Status& status : m_world.plug_man().load_folder(folder))
            failures.append(status.message());
    } else {
        // By its name: to ask a plug-in what it is takes as long as loading it.
        for (const QFileInfo& file : QDir(folder).entryInfoList({QStringLiteral("*scene*")}, QDir::Files))
            if (auto status = m_world.plug_man().load(file.absoluteFilePath()); !status)
                failures.append(status.message());
    }
    for (const auto& module : m_world.plug_man().modules()) {
        if (auto* scene = dynamic_cast<CScenePlug*>(module->main_object()); scene && !m_scene) {
            m_scene = scene;
            m_scene->join(m_world.document());
        }
        if (auto* ui = dynamic_cast<CBasePlugUi*>(module->main_object()))
            m_ui_plug_ins.push_back(ui);
    }
    return failures;
}

void Studio::start_world()
{
    if (m_scene) {
        m_scene->journal().on_changed = [this] { follow_journal(); };
        m_scene->on_world_created(&m_world);
    }
    for (CBasePlugUi* plug_in : m_ui_plug_ins) {
        m_world.add_listener(plug_in);
        plug_in->on_world_created(&m_world);
        plug_in->create_mt_after_world_run();
    }
    m_world.broadcast(tarn::ui_full_refresh);
}

void Studio::stop()
{
    m_autosave.reset();
    m_file.leave();
    for (CBasePlugUi* plug_in : m_ui_plug_ins)
        m_world.remove_listener(plug_in);
    m_ui_plug_ins.clear();
    if (m_scene)
        m_scene->journal().on_changed = nullptr;
    m_scene = nullptr;
    m_world.plug_man().unload_all();
}

bool Studio::is_changed() const
{
    return m_scene && !m_scene->journal().is_saved();
}

void Studio::follow_journal()
{
    if (m_autosave)
        is_changed() ? m_autosave->note_edit() : m_autosave->forget();
    Q_EMIT document_changed();
}

/// The scene belongs to another file, or was exchanged.
void Studio::file_changed()
{
    if (m_autosave)
        m_autosave->set_file(m_file.is_copy() ? QString() : m_file.path(), m_file.stamp());
    if (!m_file.path().isEmpty())
        remember_file(m_file.path());
    Q_EMIT document_changed();
}

Status Studio::new_file()
{
    if (!m_scene)
        return Status::error(lang(u"没有场景插件，无法新建。", u"There is no scene plug-in; nothing can be made."));
    m_scene->new_scene();
    m_file.leave();
    file_changed();
    return {};
}

Status Studio::open_file(const QString& path, bool as_copy)
{
    if (!m_scene)
        return Status::error(
            lang(u"没有场景插件，无法打开文件。", u"There is no scene plug-in; no file can be opened."));
    const auto stamp = tarn::FileStamp::of(path); // Before it is read: what is written meanwhile counts as later.
    if (auto status = m_scene->open_scene(path); !status)
        return status;
    m_file.take(QFileInfo(path).absoluteFilePath(), stamp, as_copy);
    file_changed();
    return {};
}

Status Studio::save_file(const QString& path, bool replace_read_only)
{
    if (!m_scene)
        return Status::error(lang(u"没有场景插件，无法保存。", u"There is no scene plug-in; nothing can be saved."));
    if (auto status = m_scene->save_scene(path, replace_read_only); !status)
        return status;
    m_file.take(QFileInfo(path).absoluteFilePath(), tarn::FileStamp::of(path));
    file_changed();
    return {};
}

// Nothing is lost -----------------------------------------------------------------------------------------------------

void Studio::keep_data(const QString& folder)
{
    m_data_folder = folder;
    m_file = tarn::OpenFile(folder + QStringLiteral("/open"));
    if (!m_scene)
        return;
    auto recovery = tarn::RecoveryFile::make(folder + QStringLiteral("/recovery"));
    if (!recovery) {
        Q_EMIT autosave_failed(
            lang(u"无法自动保存：文件夹 %1 不可写。", u"Autosaving is not possible: %1 cannot be written.")
                .arg(QDir::toNativeSeparators(folder)));
        return;
    }
    m_autosave = std::make_unique<Autosave>(*m_scene, std::move(recovery));
    connect(m_autosave.get(), &Autosave::failed, this, &Studio::autosave_failed);
}

std::vector<std::unique_ptr<tarn::RecoveryFile>> Studio::left_behind() const
{
    if (!m_autosave)
        return {};
    return tarn::RecoveryFile::left_behind(m_data_folder + QStringLiteral("/recovery"));
}

Status Studio::recover(std::unique_ptr<tarn::RecoveryFile> file)
{
    const tarn::RecoveryInfo info = file->info();
    if (auto status = m_scene->recover_scene(file->package(), info.file); !status)
        return status;
    if (info.file.isEmpty())
        m_file.leave();
    else
        m_file.take(info.file, info.stamp, m_file.other_holder(info.file).has_value());
    m_autosave->adopt(std::move(file), info);
    Q_EMIT document_changed();
    return {};
}

void Studio::keep_unsaved()
{
    if (m_autosave && is_changed())
        (void)m_autosave->save_now();
    else
        m_autosave.reset();
}

void Studio::after_undo()
{
    m_world.broadcast(tarn::ui_scene_changed);
    // With that code the lists show the current object alone.
    const tarn::SceneModel::Selection selected = m_scene->model().selection();
    if (selected.controls.size() + selected.dialogs.size() > 1)
        m_world.broadcast(tarn::ui_selection_changed);
}

bool Studio::undo()
{
    if (!m_scene || m_scene->is_playing() || !m_scene->journal().undo())
        return false;
    after_undo();
    return true;
}

bool Studio::redo()
{
    if (!m_scene || m_scene->is_playing() || !m_scene->journal().redo())
        return false;
    after_undo();
    return true;
}

bool Studio::go_to_step(int count)
{
    if (count < 0 || !m_scene || m_scene->is_playing() || !m_scene->journal().go_to(std::size_t(count)))
        return false;
    after_undo();
    return true;
}

void Studio::set_playing(bool on)
{
    if (!m_scene || m_scene->is_playing() == on)
        return;
    m_scene->play(on);
    m_clock.start();
    on ? m_ticks.start() : m_ticks.stop();
    m_world.broadcast(tarn::ui_scene_changed);
    m_world.update_all_views();
    Q_EMIT document_changed();
}

void Studio::tick()
{
    if (is_playing())
        m_scene->advance(played_seconds());
    else
        m_ticks.stop(); // Opening a file ends the preview too.
}

bool Studio::is_playing() const
{
    return m_scene && m_scene->is_playing();
}

QStringList Studio::recent_files() const
{
    return inifile::get_str_list_from_ini(tarn::settings::store().fileName(), QLatin1String(recent_key));
}

void Studio::remember_file(const QString& path)
{
    QStringList files = recent_files();
    files.removeAll(path);
    files.prepend(path);
    inifile::set_str_list_to_ini(tarn::settings::store().fileName(), QLatin1String(recent_key),
                                 files.mid(0, recent_limit));
}
