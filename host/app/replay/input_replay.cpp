#include "input_replay.h"

#include "core/document.h"
#include "core/language.h"
#include "core/model_object.h"
#include "engine/base_world.h"
#include "engine/scene_plug.h"
#include "object_paths.h"
#include "scene_look.h"
#include "script/script_runtime.h"
#include "studio.h"
#include "told_by_scene.h"
#include "view/view3d.h"

#include <QKeySequence>

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarn {

namespace {

using Kind = InputStep::Kind;

constexpr double tick = 0.01; ///< seconds between two times of the scene, as in a preview
constexpr QPointF nowhere(-1e6, -1e6);
constexpr qsizetype most_listed = 5; ///< of what was told instead

class Replay {
public:
    Replay(Studio& studio, CView3D& view, const InputScript& script)
        : m_world(studio.world()), m_scene(*studio.scene()), m_view(view), m_told(studio.world())
    {
        m_world.scripts().set_random_seed(script.seed);
        set_screen(script.screen);
        m_scene.play(true);
    }
    ~Replay()
    {
        m_scene.play(false);
        m_world.scripts().set_random_seed({});
    }
    Replay(const Replay&) = delete;
    Replay& operator=(const Replay&) = delete;

    /// An empty text when all is as expected.
    QString run(const InputStep& step)
    {
        if (step.is_expectation())
            return check(step);
        if (step.kind != Kind::Wait) {
            m_since = m_told.count(); // What comes now is of this input.
            m_claims.clear();
        }
        do_input(step);
        return {};
    }

private:
    void set_screen(QSize size);
    void wait(double seconds);
    void do_input(const InputStep& step);
    void mouse(MouseEvent::Kind kind, QPointF place, Qt::MouseButton button = Qt::NoButton);
    void click(QPointF place, MouseEvent::Kind press);
    void drag(const InputStep& step);
    void type(const QString& text);

    QString check(const InputStep& step);
    QString check_told(const InputStep& step);
    QString check_no_more();
    QString check_value(const InputStep& step) const;
    enum class Claim : char { None, Loose, Exact };
    bool claim(const InputStep& step);
    std::optional<std::size_t> find_told(const InputStep& step, Claim claim) const;
    QString told_instead() const;

    CBaseWorld& m_world;
    CScenePlug& m_scene;
    CView3D& m_view;
    ToldByScene m_told;
    std::size_t m_since = 0;     ///< what was told until here belongs to earlier input
    std::vector<Claim> m_claims; ///< which of the others were expected
    qint64 m_ticks = 0;
};

void Replay::set_screen(QSize size)
{
    m_view.set_fixed_view_size(size);
    m_view.set_screen_size(size);
}

void Replay::wait(double seconds)
{
    const qint64 until = m_ticks + std::llround(seconds / tick);
    while (m_ticks < until && m_scene.is_playing()) {
        m_scene.advance(double(++m_ticks) * tick);
        (void)m_told.count();
    }
}

void Replay::mouse(MouseEvent::Kind kind, QPointF place, Qt::MouseButton button)
{
    m_view.send_mouse({kind, place, button, Qt::NoModifier});
}

void Replay::click(QPointF place, MouseEvent::Kind press)
{
    mouse(MouseEvent::Kind::Move, place);
    mouse(press, place, Qt::LeftButton);
    mouse(MouseEvent::Kind::Release, place, Qt::LeftButton);
}

/// Along the places in the time that it took, at an even pace.
void Replay::drag(const InputStep& step)
{
    double all = 0;
    for (qsizetype i = 1; i < step.places.size(); ++i)
        all += QLineF(step.places[i - 1], step.places[i]).length();
    mouse(MouseEvent::Kind::Move, step.places.front());
    mouse(MouseEvent::Kind::Press, step.places.front(), Qt::LeftButton);
    for (qsizetype i = 1; i < step.places.size(); ++i) {
        const QLineF part(step.places[i - 1], step.places[i]);
        const double seconds = all > 0 ? step.number * part.length() / all : 0;
        const auto moves = std::max<qint64>(1, std::llround(seconds / tick));
        for (qint64 move = 1; move <= moves; ++move) {
            if (seconds >= tick)
                wait(tick);
            mouse(MouseEvent::Kind::Move, part.pointAt(double(move) / double(moves)));
        }
    }
    mouse(MouseEvent::Kind::Release, step.places.back(), Qt::LeftButton);
}

/// Letters that a keyboard has come with their keys.
void Replay::type(const QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c >= u' ' && c <= u'~')
            m_view.send_key(c.toUpper().unicode(), c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier);
        const bool is_pair = c.isHighSurrogate() && i + 1 < text.size();
        m_view.send_text(text.mid(i, is_pair ? 2 : 1), {});
        i += is_pair;
    }
}

void Replay::do_input(const InputStep& step)
{
    const QPointF place = step.places.value(0);
    switch (step.kind) {
    case Kind::Wait: return wait(step.number);
    case Kind::Move: return mouse(MouseEvent::Kind::Move, place);
    case Kind::Leave: return mouse(MouseEvent::Kind::Move, nowhere);
    case Kind::Press:
        mouse(MouseEvent::Kind::Move, place);
        return mouse(MouseEvent::Kind::Press, place, Qt::LeftButton);
    case Kind::Release: return mouse(MouseEvent::Kind::Release, place, Qt::LeftButton);
    case Kind::Click: return click(place, MouseEvent::Kind::Press);
    case Kind::DoubleClick: return click(place, MouseEvent::Kind::DoubleClick);
    case Kind::RightClick:
        mouse(MouseEvent::Kind::Move, place);
        return mouse(MouseEvent::Kind::Release, place, Qt::RightButton);
    case Kind::Drag: return drag(step);
    case Kind::Wheel: mouse(MouseEvent::Kind::Move, place); return m_view.send_wheel(place, step.number);
    case Kind::Turn: return m_view.camera_drag(Qt::RightButton, {}, place);
    case Kind::Pan: return m_view.camera_drag(Qt::MiddleButton, {}, place);
    case Kind::Screen: return set_screen(screen_of(step));
    case Kind::Type: return type(step.text);
    case Kind::Key: {
        const QKeyCombination keys = QKeySequence::fromString(step.text, QKeySequence::PortableText)[0];
        m_view.send_key(keys.key(), keys.keyboardModifiers());
        return;
    }
    default: return;
    }
}

QString Replay::check(const InputStep& step)
{
    if (!m_scene.is_playing())
        return lang(u"界面已停止运行", u"the interface runs no more");
    switch (step.kind) {
    case Kind::ExpectNoMore: return check_no_more();
    case Kind::ExpectValue: return check_value(step);
    default: return check_told(step);
    }
}

/// What nobody expected.
QString Replay::told_instead() const
{
    QStringList told;
    for (std::size_t i = 0; i < m_claims.size() && told.size() <= most_listed; ++i)
        if (m_claims[i] == Claim::None)
            told.append(told.size() == most_listed
                            ? QStringLiteral("…")
                            : input_step_text(m_told.step(m_since + i)).mid(QLatin1String("expect ").size()));
    return told.isEmpty() ? lang(u"什么也没有发生", u"there was nothing") : told.join(QLatin1String("; "));
}

std::optional<std::size_t> Replay::find_told(const InputStep& step, Claim claim) const
{
    for (std::size_t i = 0; i < m_claims.size(); ++i) {
        const InputStep& told = m_told.step(m_since + i);
        if (m_claims[i] == claim && told.kind == step.kind && told.text == step.text
            && (step.object.isEmpty() || told.object == step.object)
            && (step.number == 0 || told.number == step.number))
            return i;
    }
    return std::nullopt;
}

/// Each expectation has something of its own that was told, in whatever order.
bool Replay::claim(const InputStep& step)
{
    InputStep loose = step;
    loose.object.clear();
    loose.number = 0;
    const bool is_loose = step.object.isEmpty() && step.number == 0;
    std::optional<std::size_t> found = find_told(step, Claim::None);
    if (!found) {
        // One that leaves out whose call it is, or which line, may do with another.
        found = find_told(step, Claim::Loose);
        const auto other = found ? find_told(loose, Claim::None) : std::nullopt;
        if (!other)
            return false;
        m_claims[*other] = Claim::Loose;
    }
    m_claims[*found] = is_loose ? Claim::Loose : Claim::Exact;
    return true;
}

QString Replay::check_told(const InputStep& step)
{
    m_claims.resize(m_told.count() - m_since);
    if (claim(step))
        return {};
    return lang(u"期望：%1；实际：%2", u"expected: %1; found: %2")
        .arg(input_step_text(step).mid(QLatin1String("expect ").size()), told_instead());
}

QString Replay::check_no_more()
{
    m_claims.resize(m_told.count() - m_since);
    if (std::find(m_claims.begin(), m_claims.end(), Claim::None) == m_claims.end())
        return {};
    return lang(u"没有料到：%1", u"not expected: %1").arg(told_instead());
}

QString Replay::check_value(const InputStep& step) const
{
    const ModelObject* object = ObjectPaths(m_world.document()).find(step.object);
    if (!object)
        return lang(u"没有“%1”", u"there is no \"%1\"").arg(step.object);
    const std::optional<Value> value = seen_value(*object, step.attribute, m_scene.model());
    if (!value)
        return lang(u"“%1”没有属性 %2", u"\"%1\" has no attribute %2").arg(step.object, step.attribute);
    if (looks_same(*value, step.value))
        return {};
    return lang(u"“%1”的 %2：期望 %3，实际 %4", u"%2 of \"%1\": expected %3, found %4")
        .arg(step.object, step.attribute, input_value_text(step.value), input_value_text(*value));
}

} // namespace

Result<ReplayResult> replay_input(Studio& studio, CView3D& view, const InputScript& script)
{
    if (!studio.scene())
        return Status::error(lang(u"没有场景插件", u"there is no scene plug-in"));
    Replay replay(studio, view, script);
    ReplayResult result;
    for (const InputStep& step : script.steps) {
        if (const QString difference = replay.run(step); !difference.isEmpty()) {
            result.line = step.line;
            result.difference = difference;
            return result;
        }
        result.expectations += step.is_expectation();
    }
    return result;
}

} // namespace tarn
