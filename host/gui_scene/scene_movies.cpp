#include "scene_movies.h"

#include "core/document.h"
#include "core/language.h"
#include "engine/address_gate.h"
#include "engine/base_world.h"
#include "font_library.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_media.h"
#include "gui_core/gui_core.h"
#include "gui_core/swf_header.h"
#include "movies/movie_address.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr std::size_t most_calls = 1000; ///< that wait; more come only from a movie that does nothing else

const FlashState& state_of(const CDXUTFlash& control)
{
    return static_cast<const FlashState&>(control.shown_state());
}

/// Without comparing the files of two movies byte by byte.
bool is_same(const MovieSetup& one, const MovieSetup& other)
{
    return one.file.constData() == other.file.constData() && one.transparent == other.transparent
        && one.keep_size == other.keep_size;
}

} // namespace

SceneMovies::SceneMovies(CBaseWorld& world, CGuiCore& core, FontLibrary& fonts)
    : m_world(world), m_core(core), m_fonts(fonts)
{
    m_sizes.setSingleShot(true);
    m_delivery.setSingleShot(true);
    m_downloads.on_changed = [this] {
        m_stale = true;
        if (on_redraw)
            on_redraw();
    };
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

/// What its movie is made of, as far as it is there.
QByteArray SceneMovies::file_of(const CDXUTFlash& control) const
{
    const auto remote = m_remote.find(control.id());
    if (remote == m_remote.end())
        return control.file();
    return is_allowed(remote->second.address) ? m_downloads.file(remote->second.address) : QByteArray();
}

MovieSetup SceneMovies::setup_of(const CDXUTFlash& control) const
{
    const FlashState& s = state_of(control);
    MovieSetup setup{.file = file_of(control), .transparent = s.transparent, .keep_size = s.keep_size};
    const auto header = setup.file.isEmpty() ? Status::error({}) : read_swf_header(setup.file);
    if (!header)
        setup.file.clear();
    else if (header.value().frame_rate > 0)
        setup.frame_rate = header.value().frame_rate;
    return setup;
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

void SceneMovies::follow_all()
{
    for (const CDXUTControl* each : m_core.controls()) {
        if (each->GetType() != DXUT_CONTROL_FLASH)
            continue;
        const auto& control = static_cast<const CDXUTFlash&>(*each);
        note_remote(control);
        follow(control);
    }
    if (!m_shown.empty())
        hand_in_fonts();
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
    if (const AddressGate* allowed = gate(); allowed && allowed->revision() != m_gate_revision) {
        m_gate_revision = allowed->revision();
        m_stale = true;
    }
    if (std::exchange(m_stale, false))
        follow_all();
    load_remote();
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
    if (!on)
        m_downloads.clear();
    if (AddressGate* const gate = m_world.address_gate())
        gate->set_running(on);
    follow_all(); // What came from the network is there only while the interface runs.
    for (auto& [id, shown] : m_shown)
        m_player.start(shown.movie, on);
}

bool SceneMovies::awaits_picture() const
{
    return m_sizes.isActive() || std::ranges::any_of(m_shown, [&](const auto& entry) {
               return m_player.awaits_first_frame(entry.second.movie);
           });
}

// Movies of the network -------------------------------------------------------------------------------------------------

/// Null while nothing may be loaded at all.
AddressGate* SceneMovies::gate() const
{
    return m_playing ? m_world.address_gate() : nullptr;
}

bool SceneMovies::is_allowed(const QString& address) const
{
    const AddressGate* gate = this->gate();
    return gate && !address.isEmpty() && gate->is_allowed(address);
}

void SceneMovies::note_remote(const CDXUTFlash& control)
{
    const FlashState& s = state_of(control);
    if (s.source_local || s.source.isEmpty()) {
        m_remote.erase(control.id());
        return;
    }
    Remote& remote = m_remote[control.id()];
    if (std::exchange(remote.source, s.source) != s.source) {
        const auto address = movie_address(s.source);
        remote.address = address ? address.value() : QString();
        remote.refusal = address.status().message();
    }
    if (!is_allowed(remote.address))
        m_downloads.drop(remote.address);
}

/// Only what is seen is loaded, or asked for; then for all others too, so that one box is enough.
void SceneMovies::load_remote()
{
    AddressGate* const gate = this->gate();
    bool asks = false;
    QStringList unknown;
    for (auto entry = m_remote.begin(); entry != m_remote.end();) {
        const auto* control = dynamic_cast<CDXUTFlash*>(m_core.find_control(entry->first));
        if (!control) {
            entry = m_remote.erase(entry);
            continue;
        }
        Remote& remote = entry->second;
        ++entry;
        const bool is_wanted = gate && !remote.address.isEmpty();
        if (is_wanted && !is_allowed(remote.address)) {
            asks |= is_seen(*control);
            unknown << remote.address;
        } else if (is_wanted && is_seen(*control)) {
            m_downloads.load(remote.address);
        }
        if (const QString text = failure_of_remote(*control); std::exchange(remote.told, text) != text)
            control->redraw();
    }
    if (asks)
        gate->ask(unknown);
}

QString SceneMovies::failure_of_remote(const CDXUTFlash& control) const
{
    const auto found = m_remote.find(control.id());
    if (found == m_remote.end())
        return {};
    const Remote& remote = found->second;
    if (remote.address.isEmpty())
        return remote.refusal;
    if (!m_playing) {
        const AddressGate* known = m_world.address_gate();
        return known && known->is_allowed(remote.address)
            ? lang(u"预览（F5）时加载。", u"It is loaded in a preview (F5).")
            : lang(u"预览（F5）时加载；首次会询问是否允许此网址。",
                   u"It is loaded in a preview (F5), which asks first whether you allow the address.");
    }
    if (!gate())
        return lang(u"此处不从网络加载。", u"Nothing is loaded from the network here.");
    if (!is_allowed(remote.address))
        return gate()->can_ask()
            ? lang(u"尚未允许此网址，因此未加载。下次预览会再次询问。",
                   u"The address is not allowed, so nothing was loaded. The next preview asks again.")
            : lang(u"本机未允许此网址；请在编辑器中预览并允许。",
                   u"The address is not allowed on this machine. To allow it, preview the interface in the editor.");
    const QByteArray file = m_downloads.file(remote.address);
    if (file.isNull()) {
        const QString failure = m_downloads.failure(remote.address);
        return failure.isEmpty() ? lang(u"正在加载…", u"Loading…") : failure;
    }
    return read_swf_header(file).status().message();
}

// What is drawn ---------------------------------------------------------------------------------------------------------

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
    const Shown* shown = find(control);
    if (!shown)
        return failure_of_remote(control);
    const QString known = m_player.failure(shown->movie);
    const bool is_coming = known.isEmpty() && m_playing && m_player.picture(shown->movie).isNull();
    return is_coming ? lang(u"正在启动…", u"Starting…") : known;
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
