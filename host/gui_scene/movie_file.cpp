#include "movie_file.h"

#include "core/authored.h"
#include "core/document.h"
#include "core/language.h"
#include "core/model_object.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_media.h"
#include "gui_core/swf_header.h"
#include "gui_core/texture_name.h"
#include "movies/movie_orders.h"
#include "store/pak_rules.h"
#include "store/plain_file.h"

#include <QFileInfo>

#include <utility>

namespace tarn {

namespace {

Result<QByteArray> read_movie(const QString& path)
{
    auto content = read_plain_file(path, largest_movie);
    auto status = content.status();
    if (content)
        status = read_swf_header(content.value()).status();
    if (status)
        return content;
    return Status::error(lang(u"无法读取影片 %1：%2", u"The movie %1 cannot be read: %2").arg(path, status.message()));
}

} // namespace

QString movie_entry_of(const ObjectState& state)
{
    const auto* s = dynamic_cast<const FlashState*>(&state);
    return s && s->source_local && !s->source.isEmpty() ? CDXUTFlash::movie_entry(s->source) : QString();
}

void set_movie_entry(ObjectState& state, const QString& entry)
{
    static_cast<FlashState&>(state).source = entry.mid(CDXUTFlash::movie_entry({}).size());
}

Result<QString> take_movie(Document& document, const QString& path)
{
    const auto movie = read_movie(path);
    if (!movie)
        return movie.status();
    QString wanted = QFileInfo(path).fileName();
    if (!check_entry_name(CDXUTFlash::movie_entry(wanted)))
        wanted = QStringLiteral("movie.swf");
    const auto& files = document.files();
    const auto is_free = [&](const QString& name) {
        const auto found = files.find(CDXUTFlash::movie_entry(name));
        return found == files.end() || *found == movie.value();
    };
    const QString name = is_free(wanted) ? wanted : free_picture_name(wanted, is_free);
    document.edit_files([&](auto& held) { held.insert(CDXUTFlash::movie_entry(name), movie.value()); });
    return name;
}

void MovieRelease::note(const ModelObject& object)
{
    if (const QString entry = movie_entry_of(Authored::state(object)); m_document.files().contains(entry))
        m_shown.insert(entry);
}

MovieRelease::~MovieRelease()
{
    if (m_shown.isEmpty())
        return;
    for (const ModelObject* object : m_document.objects())
        m_shown.remove(movie_entry_of(Authored::state(*object)));
    if (m_shown.isEmpty())
        return;
    m_document.edit_files([this](auto& held) {
        for (const QString& entry : std::as_const(m_shown))
            held.remove(entry);
    });
}

} // namespace tarn
