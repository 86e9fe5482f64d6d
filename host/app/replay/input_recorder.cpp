#include "input_recorder.h"

#include "engine/base_world.h"
#include "engine/scene_plug.h"
#include "object_paths.h"
#include "script/script_runtime.h"
#include "shortcuts.h"
#include "studio.h"
#include "view/view3d.h"

#include <QDir>
#include <QFileInfo>
#include <QKeySequence>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

using Kind = InputStep::Kind;

constexpr double click_time = 0.4;  ///< seconds that a button is held in a click at most
constexpr double click_reach = 3;   ///< pixels
constexpr double drag_accuracy = 2; ///< pixels by which a drag may pass the places that are kept of it
constexpr double typing_gap = 1;    ///< seconds between letters of one text
/// What was told so shortly before an input may come after it when it is replayed.
constexpr double too_close = 0.1; ///< seconds

double length(QPointF way)
{
    return std::hypot(way.x(), way.y());
}

double distance_to_line(QPointF place, QPointF from, QPointF to)
{
    const QPointF line = to - from;
    const double square = QPointF::dotProduct(line, line);
    const double share = square > 0 ? std::clamp(QPointF::dotProduct(place - from, line) / square, 0.0, 1.0) : 0;
    return length(place - (from + share * line));
}

/// Marks the places that the way cannot do without, from `first` to `last` (Douglas and Peucker).
void keep_corners(const QList<QPointF>& way, qsizetype first, qsizetype last, std::vector<bool>& kept)
{
    std::vector<std::pair<qsizetype, qsizetype>> open{{first, last}};
    while (!open.empty()) {
        const auto [from, to] = open.back();
        open.pop_back();
        qsizetype farthest = from;
        double most = drag_accuracy;
        for (qsizetype i = from + 1; i < to; ++i)
            if (const double distance = distance_to_line(way[i], way[from], way[to]); distance > most) {
                farthest = i;
                most = distance;
            }
        if (farthest == from)
            continue;
        kept[std::size_t(farthest)] = true;
        open.push_back({from, farthest});
        open.push_back({farthest, to});
    }
}

QList<QPointF> corners_of(const QList<QPointF>& way)
{
    std::vector<bool> kept(std::size_t(way.size()), false);
    kept.front() = kept.back() = true;
    keep_corners(way, 0, way.size() - 1, kept);
    QList<QPointF> corners;
    for (qsizetype i = 0; i < way.size(); ++i)
        if (kept[std::size_t(i)])
            corners.append(way[i]);
    return corners;
}

double in_hundredths(double seconds)
{
    return std::round(seconds * 100) / 100;
}

bool is_mouse_button(Kind kind)
{
    return kind == Kind::Click || kind == Kind::DoubleClick || kind == Kind::RightClick || kind == Kind::Drag
        || kind == Kind::Release;
}

/// Whether the text is what the key alone types.
bool types(const InputStep& key, const QString& text)
{
    const QKeySequence keys = QKeySequence::fromString(key.text, QKeySequence::PortableText);
    return keys.count() == 1 && text.size() == 1
        && !(keys[0].keyboardModifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        && ushort(keys[0].key()) == text.front().toUpper().unicode();
}

} // namespace

InputRecorder::InputRecorder(Studio& studio, CView3D& view)
    : m_studio(studio), m_view(&view), m_scene(studio.file_name()), m_told(studio.world()), m_screen(view.screen_size())
{
    m_script.screen = m_screen;
    m_script.texts = studio.scene()->language();
    studio.world().scripts().set_random_seed(m_script.seed);
    view.set_input_watch(this);
}

InputRecorder::~InputRecorder()
{
    end();
    m_studio.world().scripts().set_random_seed({});
}

void InputRecorder::end()
{
    write_pending();
    if (m_view)
        m_view->set_input_watch(nullptr);
    m_view = nullptr;
}

double InputRecorder::now() const
{
    return m_studio.played_seconds();
}

void InputRecorder::input_comes(bool is_move, QPointF mouse)
{
    if (m_view->screen_size() != m_screen) {
        write_pending();
        m_screen = m_view->screen_size();
        add({.kind = Kind::Screen, .places = {QPointF(m_screen.width(), m_screen.height())}});
    }
    m_begin = now();
    m_told_before = m_told.count();
    m_before = is_move ? SceneLook() : look();
    m_target = is_move ? QString() : target_at(mouse);
}

SceneLook InputRecorder::look() const
{
    return {m_studio.world().document(), m_studio.scene()->model()};
}

InputRecorder::Input InputRecorder::begun(InputStep step) const
{
    return {
        .step = std::move(step), .begin = m_begin, .end = m_begin, .before = m_before, .told_before = m_told_before};
}

/// What came of it stands now.
void InputRecorder::finish(Input& input)
{
    input.end = now();
    input.after = look();
    input.told_after = m_told.count();
}

void InputRecorder::done(InputStep step)
{
    Input input = begun(std::move(step));
    if (is_mouse_button(input.step.kind) || input.step.kind == Kind::Wheel)
        input.target = m_target;
    finish(input);
    write_pending();
    write(input);
}

QString InputRecorder::path_of(const ModelObject* object) const
{
    return object ? ObjectPaths(m_studio.world().document()).path_of(*object) : QString();
}

/// What takes the mouse there.
QString InputRecorder::target_at(QPointF place) const
{
    const SceneModel& model = m_studio.scene()->model();
    const ModelObject* object = model.object_at(place);
    const ModelObject* list = model.open_list();
    const bool is_of_list = object && (object == list || object->parent() == list);
    return path_of(list && !is_of_list ? list : object);
}

void InputRecorder::mouse_came(const MouseEvent& event)
{
    switch (event.kind) {
    case MouseEvent::Kind::Move: move(event.place); return;
    case MouseEvent::Kind::Release:
        if (event.button == Qt::LeftButton)
            release(event.place);
        else
            done({.kind = Kind::RightClick, .places = {event.place}});
        return;
    default: break;
    }
    write_pending();
    const bool is_double = event.kind == MouseEvent::Kind::DoubleClick;
    m_press = begun({.kind = is_double ? Kind::DoubleClick : Kind::Press, .places = {event.place}});
    m_press->target = m_target;
    finish(*m_press);
}

void InputRecorder::move(QPointF place)
{
    const QRectF screen(QPointF(0, 0), QSizeF(m_screen));
    m_place = place;
    if (m_press) {
        if (place != m_press->step.places.back())
            m_press->step.places.append(place);
        return;
    }
    // Most moves go by unnoticed.
    if (m_told.count() == m_told_before)
        return;
    const bool leaves = !screen.contains(place);
    done({.kind = leaves ? Kind::Leave : Kind::Move, .places = leaves ? QList<QPointF>() : QList<QPointF>{place}});
}

void InputRecorder::release(QPointF place)
{
    m_place = place;
    if (!m_press)
        return;
    Input press = *std::exchange(m_press, std::nullopt);
    QList<QPointF>& way = press.step.places;
    if (place != way.back())
        way.append(place);
    const double held = now() - press.begin;
    const bool stays = std::all_of(way.begin(), way.end(),
                                   [&](QPointF at) { return length(at - way[0]) <= click_reach; });
    if (stays && held > click_time) {
        Input release = begun({.kind = Kind::Release, .places = {place}});
        finish(release);
        return write_held(press, release);
    }
    finish(press);
    if (stays) {
        way = {way.front()};
        if (press.step.kind == Kind::Press)
            press.step.kind = Kind::Click;
    } else {
        press.step.kind = Kind::Drag;
        press.step.number = in_hundredths(held);
        way = corners_of(way);
    }
    write(press);
}

/// A button that is held, for what happens meanwhile.
void InputRecorder::write_held(const Input& press, const Input& release)
{
    Input down = press;
    down.step.kind = Kind::Press;
    down.step.places = {press.step.places.front()};
    write(down);
    write(release);
}

void InputRecorder::wheel_came(QPointF place, double steps)
{
    done({.kind = Kind::Wheel, .places = {place}, .number = steps});
}

void InputRecorder::camera_came(Qt::MouseButton button, QPointF way)
{
    const Kind kind = button == Qt::RightButton ? Kind::Turn : Kind::Pan;
    const bool goes_on = !m_key && !m_typing && !m_script.steps.empty() && m_script.steps.back().kind == kind;
    if (goes_on)
        m_script.steps.back().places.front() += way;
    else
        done({.kind = kind, .places = {way}});
}

void InputRecorder::key_came(int key, Qt::KeyboardModifiers modifiers)
{
    if (is_modifier(key))
        return;
    write_key();
    const QKeyCombination keys(modifiers & ~Qt::KeypadModifier, Qt::Key(key));
    const QString name = QKeySequence(keys).toString(QKeySequence::PortableText);
    if (name.isEmpty() || QKeySequence::fromString(name, QKeySequence::PortableText)[0] != keys)
        return; // No script could name it.
    m_key = begun({.kind = Kind::Key, .text = name});
    finish(*m_key);
}

void InputRecorder::text_came(const QString& text)
{
    if (text.isEmpty())
        return;
    Input input = begun({.kind = Kind::Type});
    if (m_key && types(m_key->step, text)) {
        input = *std::exchange(m_key, std::nullopt);
        input.step = {.kind = Kind::Type};
    } else {
        write_key();
    }
    if (m_typing && input.begin - m_typing->end > typing_gap)
        write_typing();
    if (!m_typing)
        m_typing = input;
    m_typing->step.text += text;
    finish(*m_typing);
}

void InputRecorder::write_typing()
{
    if (m_typing)
        write(*std::exchange(m_typing, std::nullopt));
}

void InputRecorder::write_key()
{
    if (!m_key)
        return;
    write_typing();
    write(*std::exchange(m_key, std::nullopt));
}

void InputRecorder::write_pending()
{
    write_key();
    write_typing();
}

void InputRecorder::write(const Input& input)
{
    wait_for(input);
    add(input.step, input.target);
    bool is_all = true;
    if (input.step.kind == Kind::Drag) {
        m_written += input.step.number;
        is_all = expect_last_told(input.told_before, input.told_after);
    } else {
        expect_told(input.told_before, input.told_after);
    }
    if (is_mouse_button(input.step.kind) && is_all)
        add({.kind = Kind::ExpectNoMore});
    expect_changes(input);
    m_expected = input.told_after;
}

/// A press gives the keyboard to what is pressed; that goes without saying.
void InputRecorder::expect_changes(const Input& input)
{
    for (const InputStep& change : input.after.changes_since(input.before, m_studio.world().document()))
        if (change.attribute != QLatin1String("focused") || change.object != input.target || input.target.isEmpty())
            add(change);
}

void InputRecorder::wait_for(const Input& input)
{
    add_wait(input.begin);
    std::size_t settled = m_expected;
    while (settled < input.told_before && m_told.time(settled) < input.begin - too_close)
        ++settled;
    expect_told(m_expected, settled);
}

void InputRecorder::expect_told(std::size_t from, std::size_t until)
{
    for (std::size_t i = from; i < until; ++i)
        add(m_told.step(i));
}

/// How often a function is called while the mouse moves hangs on how often the mouse tells where it is: what counts is its
/// last call, and what that said. False when there were others.
bool InputRecorder::expect_last_told(std::size_t from, std::size_t until)
{
    const auto is_again = [&](std::size_t call) {
        const InputStep& step = m_told.step(call);
        for (std::size_t i = call + 1; i < until; ++i)
            if (const InputStep& other = m_told.step(i);
                other.kind == Kind::ExpectCall && other.text == step.text && other.object == step.object)
                return true;
        return false;
    };
    bool is_all = true;
    bool is_left_out = false;
    for (std::size_t i = from; i < until; ++i) {
        if (m_told.step(i).kind == Kind::ExpectCall)
            is_left_out = is_again(i);
        if (is_left_out)
            is_all = false;
        else
            add(m_told.step(i));
    }
    return is_all;
}

void InputRecorder::add_wait(double until)
{
    const double seconds = in_hundredths(until - m_written);
    if (seconds <= 0)
        return;
    add({.kind = Kind::Wait, .number = seconds});
    m_written += seconds;
}

void InputRecorder::add(InputStep step, const QString& note)
{
    m_script.steps.push_back(std::move(step));
    m_notes.append(note);
}

QString InputRecorder::expect_here()
{
    const SceneModel& model = m_studio.scene()->model();
    const ModelObject* object = model.object_at(m_place);
    if (!object)
        return {};
    write_pending();
    add_wait(now());
    for (const InputStep& step : look_of(*object, model))
        add(step);
    return path_of(object);
}

QString InputRecorder::text(const QString& path)
{
    InputScript script = m_script;
    if (!m_scene.isEmpty())
        script.scene = QFileInfo(path).absoluteDir().relativeFilePath(m_scene);
    return input_script_text(script, m_notes);
}

} // namespace tarn
