#include "scene_movies.h"

#include "core/document.h"
#include "core/language.h"
#include "font_library.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_media.h"
#include "gui_core/gui_core.h"
#include "gui_core/swf_header.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr std::size_t most_calls = 1000; ///< that wait; more come only from a movie that does nothing else

const FlashState& state_of(const CDXUTFlash& control)
{
    return static_cast<const FlashState&>(control.shown_state());
}

MovieSetup setup_of(const CDXUTFlash& control)
{
    const FlashState& s = state_of(control);
    MovieSetup setup{.file = control.file(), .transparent = s.transparent, .keep_size = s.keep_size};
    const auto header = setup.file.isEmpty() ? Status::error({}) : read_swf_header(setup.file);
    if (!header)
        setup.file.clear();
    else if (header.value().frame_rate > 0)
        setup.frame_rate = header.value().frame_rate;
    return setup;
}

/// Without comparing the files of two movies byte by byte.
bool is_same(const MovieSetup& one, const MovieSetup& other)
{
    return one.file.constData() == other.file.constData() && one.transparent == other.transparent
        && one.keep_size == other.keep_size;
}

} // namespace

SceneMovies::SceneMovies(CGuiCore& core, FontLibrary& fonts) : m_core(core), m_fonts(fonts)
{
    m_sizes.setSingleShot(true);
    m_delivery.setSingleShot(true);
    QObject::connect(&m_sizes, &QTimer::timeout, &m_sizes, [this] { take_sizes(); });
    QObject::connect(&m_delivery, &QTimer::timeout, &m_delivery, [this] { deliver(); });
    m_player.on_changed = [this](MoviePlayer::Id movie) {
        if (const CDXUTFlash* control = control_of(movie)) {
            control->redraw();
            if (on_redraw)
                on_redraw();
        }
    };
    m_player.on_event = [this](MoviePlayer::Id movie, const MovieAnswer& answer) {
        const bool calls = answer.event == QLatin1String("call") || answer.event == QLatin1String("fscommand");
        const CDXUTFlash* control = calls && m_playing ? control_of(movie) : nullptr;
        if (!control || m_calls.size() >= most_calls)
            return;
        m_calls.push_back({control->id(), answer.name, answer.given});
        m_delivery.start(0); // The functions may do anything, ending the movie among them.
    };
    m_core.document().changes().add_listener(this);
    m_core.set_movies(this);
}

SceneMovies::~SceneMovies()
{
    m_core.set_movies(nullptr);
    m_core.document().changes().remove_listener(this);
}

void SceneMovies::model_changed(const ModelChange&)
{
    m_stale = true;
}

CDXUTFlash* SceneMovies::control_of(MoviePlayer::Id movie) const
{
    const auto found = std::ranges::find(m_shown, movie, [](const auto& entry) { return entry.second.movie; });
    CDXUTControl* control = found == m_shown.end() ? nullptr : m_core.find_control(found->first);
    return dynamic_cast<CDXUTFlash*>(control);
}

const SceneMovies::Shown* SceneMovies::find(const CDXUTFlash& control) const
{
    const auto found = m_shown.find(control.id());
    return found == m_shown.end() ? nullptr : &found->second;
}

// What is seen ----------------------------------------------------------------------------------------------------------

bool SceneMovies::is_seen(const CDXUTFlash& control) const
{
    const CDXUTDialog* home = control.dialog();
    if (!home || !home->is_seen() || home->minimized() || !control.is_seen())
        return false;
    return m_core.is_in_world(*home) || control.screen_bounds().intersects(QRectF({}, m_core.screen_size()));
}

/// The control has the movie that it names now, or none.
void SceneMovies::follow(const CDXUTFlash& control)
{
    const MovieSetup setup = setup_of(control);
    const auto found = m_shown.find(control.id());
    if (found != m_shown.end() && is_same(m_player.setup(found->second.movie), setup))
        return;
    if (found != m_shown.end()) {
        m_player.close(found->second.movie);
        m_shown.erase(found);
    }
    if (setup.file.isEmpty())
        return;
    const MoviePlayer::Id movie = m_player.open(setup);
    m_shown[control.id()].movie = movie;
    if (m_playing)
        m_player.start(movie, true);
}

void SceneMovies::see(const CDXUTFlash& control, Shown& shown)
{
    const bool seen = is_seen(control);
    if (std::exchange(shown.seen, seen) == seen)
        return;
    if (seen && m_playing && state_of(control).reload)
        m_player.start(shown.movie, true);
    m_player.set_seen(shown.movie, seen);
}

void SceneMovies::hand_in_fonts()
{
    QMap<QString, QByteArray> files;
    for (const FontLibrary::Font& font : m_fonts.fonts())
        for (const QString& family : font.families)
            files.insert(family, font.content);
    m_player.set_fonts(files);
}

void SceneMovies::update()
{
    if (std::exchange(m_stale, false)) {
        for (const CDXUTControl* control : m_core.controls())
            if (control->GetType() == DXUT_CONTROL_FLASH)
                follow(static_cast<const CDXUTFlash&>(*control));
        if (!m_shown.empty())
            hand_in_fonts();
    }
    for (auto shown = m_shown.begin(); shown != m_shown.end();) {
        auto* control = dynamic_cast<CDXUTFlash*>(m_core.find_control(shown->first));
        if (control) {
            see(*control, shown->second);
            if (m_core.live().focused != control)
                control->release_keys();
            ++shown;
        } else {
            m_player.close(shown->second.movie);
            shown = m_shown.erase(shown);
        }
    }
}

void SceneMovies::play(bool on)
{
    m_playing = on;
    m_calls.clear();
    for (auto& [id, shown] : m_shown)
        m_player.start(shown.movie, on);
}

QImage SceneMovies::picture(const CDXUTFlash& control, QSize pixels)
{
    const auto found = m_shown.find(control.id());
    if (found == m_shown.end())
        return {};
    found->second.asked = found->second.asked.expandedTo(pixels);
    if (!m_sizes.isActive())
        m_sizes.start(0); // Other views may ask for more of it.
    return m_player.picture(found->second.movie);
}

void SceneMovies::take_sizes()
{
    for (auto& [id, shown] : m_shown)
        if (const QSize asked = std::exchange(shown.asked, {}); !asked.isEmpty())
            m_player.set_size(shown.movie, asked);
}

QString SceneMovies::failure(const CDXUTFlash& control) const
{
    if (!state_of(control).source_local)
        return lang(u"不播放网络上的影片；请把它添加为本地文件。",
                    u"Movies of the network are not played; add it as a local file.");
    const Shown* shown = find(control);
    return shown ? m_player.failure(shown->movie) : QString();
}

// What happens to movies ------------------------------------------------------------------------------------------------

bool SceneMovies::is_played(const CDXUTFlash& control) const
{
    const Shown* shown = m_playing ? find(control) : nullptr;
    return shown && m_player.failure(shown->movie).isEmpty();
}

MovieDeeds* SceneMovies::deeds(const CDXUTFlash& control)
{
    return is_played(control) ? &m_player.ask(find(control)->movie) : nullptr;
}

void SceneMovies::mouse(const CDXUTFlash& control, Mouse what, QPointF inside)
{
    constexpr const char* names[] = {"enter", "move", "down", "up", "leave"};
    MovieDeeds* asked = deeds(control);
    const QSizeF size = control.rect().size();
    if (!asked || size.isEmpty())
        return;
    const QSizeF pixels = m_player.picture(find(control)->movie).size();
    const QPointF place(inside.x() * pixels.width() / size.width(), inside.y() * pixels.height() / size.height());
    asked->mouse(names[int(what)], place, m_core.live().pressed == &control);
}

void SceneMovies::wheel(const CDXUTFlash& control, double steps)
{
    if (MovieDeeds* asked = deeds(control))
        asked->turn_wheel(steps);
}

void SceneMovies::key(const CDXUTFlash& control, bool down, const QString& key, const QString& code)
{
    if (MovieDeeds* asked = deeds(control))
        asked->key(down, key, code);
}

bool SceneMovies::call(const CDXUTFlash& control, const QString& name, const std::vector<Value>& given)
{
    MovieDeeds* asked = deeds(control);
    if (asked)
        asked->call(0, name, given);
    return asked != nullptr;
}

bool SceneMovies::run(const CDXUTFlash& control, bool on)
{
    MovieDeeds* asked = deeds(control);
    if (asked)
        asked->run(on);
    return asked != nullptr;
}

bool SceneMovies::go_to_frame(const CDXUTFlash& control, int frame)
{
    MovieDeeds* asked = deeds(control);
    if (asked)
        asked->go_to_frame(frame);
    return asked != nullptr;
}

void SceneMovies::deliver()
{
    const std::deque<Call> calls = std::exchange(m_calls, {});
    for (const Call& call : calls)
        if (auto* control = dynamic_cast<CDXUTFlash*>(m_core.find_control(call.control));
            control && m_playing && on_call)
            on_call(*control, call.name, call.given);
}

} // namespace tarn
