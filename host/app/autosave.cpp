#include "autosave.h"

#include "core/language.h"
#include "engine/scene_plug.h"

#include <system_error>
#include <utility>

using tarn::lang;
using tarn::Status;

namespace {

// Edits. What is done while a copy is written would be lost with it, so the copy is taken early. A change outside any
// action is told one edit late.
constexpr int copied_after = Autosave::most_edits / 2;
constexpr int waited_after = Autosave::most_edits - 2;

} // namespace

Autosave::Autosave(CScenePlug& scene, std::unique_ptr<tarn::RecoveryFile> file)
    : m_scene(scene), m_file(std::move(file))
{
    m_longest.setSingleShot(true);
    m_longest.setInterval(longest);
    connect(&m_longest, &QTimer::timeout, this, &Autosave::start);
}

Autosave::~Autosave()
{
    forget();
}

void Autosave::set_file(const QString& file, const tarn::FileStamp& stamp)
{
    forget();
    m_info.file = file;
    m_info.stamp = stamp;
}

void Autosave::adopt(std::unique_ptr<tarn::RecoveryFile> file, const tarn::RecoveryInfo& info)
{
    forget();
    m_file = std::move(file);
    m_info = info;
}

void Autosave::note_edit()
{
    ++m_edits;
    if (!m_longest.isActive())
        m_longest.start();
    if (m_edits - m_copied_at < copied_after)
        return;
    if (m_writing.valid() && m_edits - m_kept_at >= waited_after && !m_fails)
        (void)wait();
    if (!m_writing.valid())
        start();
}

void Autosave::start()
{
    if (m_writing.valid())
        return; // finish() looks whether there is more.
    m_longest.stop();
    m_copied_at = m_edits;
    m_copy = m_scene.copy_scene();
    m_info.when = QDateTime::currentDateTime();
    const auto write = [this, job = ++m_job, copy = m_copy.get(), file = m_file.get(), info = m_info] {
        auto status = file->write_info(info);
        if (status)
            status = copy->write(file->package());
        QMetaObject::invokeMethod(
            this, [this, job] { finish(job); }, Qt::QueuedConnection);
        return status;
    };
    try {
        m_writing = std::async(std::launch::async, write);
    } catch (const std::system_error&) { // There are no threads left.
        m_writing = std::async(std::launch::deferred, write);
    }
}

void Autosave::finish(int job)
{
    if (job != m_job || !m_writing.valid())
        return;
    (void)wait();
    if (m_edits - m_copied_at >= copied_after)
        start();
}

Status Autosave::wait()
{
    auto status = m_writing.get();
    m_copy.reset();
    if (status) {
        m_kept_at = m_copied_at;
        m_fails = false;
        return status;
    }
    m_longest.start(); // Perhaps it is possible then.
    if (!std::exchange(m_fails, true))
        Q_EMIT failed(lang(u"无法自动保存：%1", u"Autosaving is not possible: %1").arg(status.message()));
    return status;
}

void Autosave::forget()
{
    if (m_writing.valid()) {
        m_writing.wait();
        m_writing = {};
        m_copy.reset();
    }
    m_longest.stop();
    m_copied_at = m_kept_at = m_edits;
    m_fails = false;
    m_file->remove();
}

Status Autosave::save_now()
{
    if (m_writing.valid())
        (void)wait();
    start(); // Also what is no step of the journal yet, and so was not told.
    return wait();
}
