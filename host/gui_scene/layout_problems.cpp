#include "layout_problems.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_static.h"
#include "gui_draw/gui_painter.h"
#include "gui_draw/text_cache.h"
#include "gui_plug_scene.h"
#include "translations/translations.h"

#include <QImage>
#include <QPainter>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>
#include <tuple>

namespace tarn {

namespace {

using Problem = SceneModel::Problem;

constexpr double touching = 2;            ///< pixels by which controls may overlap unnoticed
constexpr std::size_t most_moments = 500; ///< of a timebar; more keys than that are thinned out
constexpr float finest = 0.01f;           ///< seconds to which the beginning of a fault is found

bool cuts_text(const DrawSlot& slot, const QString& text)
{
    const auto* drawn = text.isEmpty() ? nullptr : dynamic_cast<const TextCache*>(slot.get());
    return drawn && drawn->is_cut();
}

bool cuts_text(const CDXUTControl& control)
{
    const auto* text = dynamic_cast<const CDXUTStatic*>(&control);
    return text && cuts_text(control.draw_slot(), text->text());
}

bool takes_mouse(const CDXUTControl& control)
{
    return control.is_interactive() && control.is_seen() && control.GetEnabled();
}

/// What of the scene is looked at.
struct Shown {
    const CTimebar* bar = nullptr; ///< null: none
    float time = 0;                ///< of the timebar, seconds
    QString language{};            ///< empty: the texts as they were made

    QString text() const
    {
        return bar ? lang(u"时间轴 %1，%2 秒", u"timebar %1 at %2 s").arg(bar->name()).arg(double(time)) : language;
    }
};

enum class Fault { CutText, OffScreen, Covered };

struct Found {
    ModelObject* object;
    QString name;
    Fault fault;
    QString what;
    quint32 other = 0; ///< that it meets; ids

    auto key() const { return std::tuple(object->id(), fault, other); }
};
using FoundKeys = std::set<std::tuple<quint32, Fault, quint32>>;

/// Not before the fault: to the next hundredth.
float told_time(float time)
{
    constexpr double whole = 0.001; // What is a hundredth but for the last bit of a float.
    return float(std::ceil(double(time) * 100 - whole) / 100);
}

/// Finds what is wrong with the interface as it is shown, on one screen.
class Look {
public:
    explicit Look(CGuiCore& core) : m_core(core) {}

    std::vector<Found> at(const QSize& size)
    {
        m_found.clear();
        m_screen = QRectF(QPointF(), QSizeF(size));
        m_core.set_screen_size(size);
        draw(size);
        look_at(*m_core.GetRootDialog());
        for (CDXUTDialog* dialog : m_core.GetDialogs())
            if (dialog->is_seen() && !dialog->minimized())
                look_at(*dialog);
        return std::move(m_found);
    }

private:
    /// Drawing lays the texts out, and knows best what it cut.
    void draw(const QSize& size)
    {
        QImage picture(size, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&picture);
        m_painter.paint(painter, m_core, m_screen, 1);
    }
    void look_at(CDXUTDialog& dialog)
    {
        const DialogState& state = dialog.dialog_state();
        const bool in_world = !state.bind_texture.isEmpty();
        if (state.caption_shown && cuts_text(dialog.draw_slot(), state.caption))
            add(dialog, dialog.name(), Fault::CutText, lang(u"标题放不下", u"The title does not fit"));
        std::vector<CDXUTControl*> clickable;
        for (CDXUTControl* control : dialog.controls()) {
            if (!control->is_seen())
                continue;
            const bool is_off = !in_world && !control->screen_bounds().intersects(m_screen);
            if (is_off)
                add(*control, control->name(), Fault::OffScreen,
                    lang(u"控件在屏幕之外", u"The control is off the screen"));
            else if (cuts_text(*control))
                add(*control, control->name(), Fault::CutText, lang(u"文字放不下", u"The text does not fit"));
            if (takes_mouse(*control))
                clickable.push_back(control);
        }
        look_for_covered(std::move(clickable));
    }
    /// From left to right, with those at hand that reach as far as the present one.
    void look_for_covered(std::vector<CDXUTControl*> controls)
    {
        std::vector<std::pair<QRectF, CDXUTControl*>> areas;
        for (CDXUTControl* control : controls)
            areas.emplace_back(control->screen_bounds(), control);
        std::stable_sort(areas.begin(), areas.end(),
                         [](const auto& a, const auto& b) { return a.first.left() < b.first.left(); });
        std::vector<std::pair<QRectF, CDXUTControl*>> open;
        for (const auto& area : areas) {
            std::erase_if(open, [&](const auto& other) { return other.first.right() <= area.first.left() + touching; });
            for (const auto& other : open) {
                const QRectF common = area.first & other.first;
                if (common.width() > touching && common.height() > touching)
                    add_covered(*area.second, *other.second);
            }
            open.push_back(area);
        }
    }
    void add_covered(CDXUTControl& a, CDXUTControl& b)
    {
        const CDXUTDialog& dialog = *a.dialog();
        const bool a_is_above = dialog.GetControlIndex(&a) > dialog.GetControlIndex(&b);
        CDXUTControl& below = a_is_above ? b : a;
        const CDXUTControl& above = a_is_above ? a : b;
        add(below, below.name(), Fault::Covered,
            lang(u"与可点击的控件 %1 重叠", u"It overlaps %1, which takes clicks, too").arg(above.name()), above.id());
    }
    void add(ModelObject& object, const QString& name, Fault fault, const QString& what, quint32 other = 0)
    {
        m_found.push_back({.object = &object, .name = name, .fault = fault, .what = what, .other = other});
    }

    CGuiCore& m_core;
    GuiPainter m_painter;
    QRectF m_screen;
    std::vector<Found> m_found;
};

/// Tells each fault once, where it is seen first.
class LayoutCheck {
public:
    explicit LayoutCheck(CGuiCore& core) : m_look(core) {}

    void look(const QSize& size, const Shown& shown)
    {
        for (const Found& found : m_look.at(size))
            tell(found, size, shown);
    }
    /// What is wrong at the timebar's time and was not at `before`: it is told for when it began. `show` shows another time.
    void look_since(const QSize& size, const CTimebar& bar, float before, const std::function<void(float)>& show)
    {
        std::vector<Found> found = m_look.at(size);
        std::erase_if(found, [this](const Found& one) { return m_told.contains(one.key()); });
        const float now = bar.current_time();
        tell_beginnings(found, size, bar, before, now, show);
        if (!found.empty())
            show(now);
    }
    std::vector<Problem> take() { return std::move(m_problems); }

private:
    /// By halves of the time between `from`, when they were not seen, and `to`, when they are.
    void tell_beginnings(const std::vector<Found>& found, const QSize& size, const CTimebar& bar, float from, float to,
                         const std::function<void(float)>& show)
    {
        if (found.empty())
            return;
        if (to - from <= finest) {
            for (const Found& one : found)
                tell(one, size, {.bar = &bar, .time = told_time(to)});
            return;
        }
        const float middle = (from + to) / 2;
        show(middle);
        FoundKeys seen;
        for (const Found& one : m_look.at(size))
            seen.insert(one.key());
        std::vector<Found> early;
        std::vector<Found> late;
        for (const Found& one : found)
            (seen.contains(one.key()) ? early : late).push_back(one);
        tell_beginnings(early, size, bar, from, middle, show);
        tell_beginnings(late, size, bar, middle, to, show);
    }
    void tell(const Found& found, const QSize& size, const Shown& shown)
    {
        if (!m_told.insert(found.key()).second)
            return;
        const QString where = QStringLiteral("%1x%2").arg(size.width()).arg(size.height())
            + (shown.text().isEmpty() ? QString() : QLatin1String(", ") + shown.text());
        m_problems.push_back({.object = found.object,
                              .place = found.name,
                              .text = lang(u"%1（%2）。", u"%1 (%2).").arg(found.what, where),
                              .is_warning = true,
                              .timebar = shown.bar ? shown.bar->id() : 0,
                              .time = shown.time});
    }

    Look m_look;
    FoundKeys m_told;
    std::vector<Problem> m_problems;
};

/// The times at which something begins or ends to move, and the middles between them, seconds.
std::vector<float> moments_of(const CTimebar& bar)
{
    std::set<float> keys{0, bar.get_total_length()};
    for (const CTimerObject* object : bar.objects())
        for (const CTVar* variable : object->variables())
            variable->keys().each_time(0, bar.get_total_length(), [&](qsizetype, float time) { keys.insert(time); });
    std::vector<float> times(keys.begin(), keys.end());
    const std::size_t every = times.size() / most_moments + 1;
    std::vector<float> moments;
    for (std::size_t i = 0; i < times.size(); i += every) {
        moments.push_back(times[i]);
        if (i + every < times.size())
            moments.push_back((times[i] + times[i + every]) / 2);
    }
    return moments;
}

/// Shows the timebars of a scene at their times, as the author sees them there.
class Scrubbing {
public:
    explicit Scrubbing(CAnimationScene& animation)
        : m_animation(animation), m_current(animation.current_bar()), m_editing(animation.is_editing())
    {
        m_animation.set_editing(true);
    }
    ~Scrubbing()
    {
        m_animation.set_current_bar(m_current);
        m_animation.set_editing(m_editing);
    }
    Scrubbing(const Scrubbing&) = delete;
    Scrubbing& operator=(const Scrubbing&) = delete;

    void show(CTimebar& bar, float time)
    {
        bar.set_current_time(time);
        m_animation.show_frame();
    }
    /// `visit` gets the time that was shown before, and answers whether to go on; false when it did not.
    template <class Visit>
    bool each_moment(Visit&& visit)
    {
        const std::vector<CTimebar*> bars = m_animation.bars();
        for (std::size_t i = 0; i < bars.size(); ++i) {
            CTimebar& bar = *bars[i];
            const float before = bar.current_time();
            m_animation.set_current_bar(&bar);
            const std::vector<float> moments = moments_of(bar);
            bool goes_on = true;
            for (std::size_t k = 0; k < moments.size() && goes_on; ++k) {
                show(bar, moments[k]);
                goes_on = visit(bar, moments[k ? k - 1 : k],
                                (double(i) + double(k) / double(moments.size())) / double(bars.size()));
            }
            bar.set_current_time(before);
            if (!goes_on)
                return false;
        }
        return true;
    }

private:
    CAnimationScene& m_animation;
    CTimebar* m_current;
    bool m_editing;
};

/// The scene in one of its languages, for the length of a scope; not while it runs.
class ShownLanguage {
public:
    ShownLanguage(CGuiPlugScene& scene, const QString& language)
        : m_scene(scene), m_rehearsal(scene.document().changes())
    {
        const ShownWrites writes(m_scene.document());
        m_scene.translations().show(language);
    }
    ~ShownLanguage()
    {
        m_scene.document().clear_shown();
        if (m_scene.animation().is_editing())
            m_scene.animation().show_frame();
    }
    ShownLanguage(const ShownLanguage&) = delete;
    ShownLanguage& operator=(const ShownLanguage&) = delete;

private:
    CGuiPlugScene& m_scene;
    Rehearsal m_rehearsal;
};

} // namespace

Result<std::vector<Problem>> find_layout_problems(CGuiPlugScene& scene, std::span<const QSize> sizes, bool over_time,
                                                  const Progress& progress)
{
    CGuiCore& core = scene.gui_core();
    const QSize before = core.screen_size();
    LayoutCheck check(core);
    const auto look = [&](const Shown& shown) {
        for (const QSize& size : sizes)
            check.look(size, shown);
    };
    look({});
    const auto look_over_time = [&] {
        Scrubbing scrubbing(scene.animation());
        return scrubbing.each_moment([&](CTimebar& bar, float last, double share) {
            for (const QSize& size : sizes)
                check.look_since(size, bar, last, [&](float time) { scrubbing.show(bar, time); });
            return progress.go_on(share);
        });
    };
    const bool is_whole = !over_time || look_over_time();
    for (const QString& language : scene.translations().languages()) {
        const ShownLanguage shown(scene, language);
        look({.language = language});
    }
    core.set_screen_size(before);
    if (!is_whole)
        return stopped();
    return check.take();
}

QSet<quint32> find_cut_texts(CGuiPlugScene& scene, const QString& language)
{
    const ShownLanguage shown(scene, language);
    QSet<quint32> cut;
    for (const Found& found : Look(scene.gui_core()).at(scene.gui_core().screen_size()))
        if (found.fault == Fault::CutText)
            cut.insert(found.object->id());
    return cut;
}

} // namespace tarn
