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
#include <set>

namespace tarn {

namespace {

using Problem = SceneModel::Problem;

constexpr double touching = 2;            ///< pixels by which controls may overlap unnoticed
constexpr std::size_t most_moments = 500; ///< of a timebar; more keys than that are thinned out

bool cuts_text(const CDXUTControl& control)
{
    const auto* text = dynamic_cast<const CDXUTStatic*>(&control);
    const auto* drawn = text && !text->text().isEmpty() ? dynamic_cast<const TextCache*>(control.draw_slot().get())
                                                        : nullptr;
    return drawn && drawn->is_cut();
}

bool takes_mouse(const CDXUTControl& control)
{
    return control.is_interactive() && control.is_seen() && control.GetEnabled();
}

/// What of the scene is looked at.
struct Shown {
    const CTimebar* bar = nullptr; ///< shown at its time; null: none
    QString language{};            ///< empty: the texts as they were made

    QString text() const
    {
        return bar ? lang(u"时间轴 %1，%2 秒", u"timebar %1 at %2 s").arg(bar->name()).arg(double(bar->current_time()))
                   : language;
    }
};

/// Looks at one moment of the interface on one screen.
class LayoutCheck {
public:
    explicit LayoutCheck(CGuiPlugScene& scene) : m_scene(scene), m_core(scene.gui_core()) {}

    void look(const QSize& size, const Shown& shown)
    {
        m_screen = QRectF(QPointF(), QSizeF(size));
        m_shown = shown;
        m_core.set_screen_size(size);
        draw(size);
        look_at(*m_core.GetRootDialog());
        for (const CDXUTDialog* dialog : m_core.GetDialogs())
            if (dialog->is_seen() && !dialog->minimized())
                look_at(*dialog);
    }
    std::vector<Problem> take() { return std::move(m_problems); }
    QSet<quint32> cut_texts() const
    {
        QSet<quint32> cut;
        for (const auto& [object, fault, other] : m_told)
            if (fault == Fault::CutText)
                cut.insert(object);
        return cut;
    }

private:
    enum class Fault { CutText, OffScreen, Covered };

    /// Drawing lays the texts out, and knows best what it cut.
    void draw(const QSize& size)
    {
        QImage picture(size, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&picture);
        m_painter.paint(painter, m_core, m_screen, 1);
    }
    void look_at(const CDXUTDialog& dialog)
    {
        const bool in_world = !dialog.dialog_state().bind_texture.isEmpty();
        std::vector<CDXUTControl*> clickable;
        for (CDXUTControl* control : dialog.controls()) {
            if (!control->is_seen())
                continue;
            const bool is_off = !in_world && !control->screen_bounds().intersects(m_screen);
            if (is_off)
                tell(*control, Fault::OffScreen, lang(u"控件在屏幕之外", u"The control is off the screen"));
            else if (cuts_text(*control))
                tell(*control, Fault::CutText, lang(u"文字放不下", u"The text does not fit"));
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
                    tell_covered(*area.second, *other.second);
            }
            open.push_back(area);
        }
    }
    void tell_covered(CDXUTControl& a, CDXUTControl& b)
    {
        const CDXUTDialog& dialog = *a.dialog();
        const bool a_is_above = dialog.GetControlIndex(&a) > dialog.GetControlIndex(&b);
        CDXUTControl& below = a_is_above ? b : a;
        const CDXUTControl& above = a_is_above ? a : b;
        tell(below, Fault::Covered,
             lang(u"与可点击的控件 %1 重叠", u"It overlaps %1, which takes clicks, too").arg(above.name()), above.id());
    }
    void tell(CDXUTControl& control, Fault fault, const QString& what, quint32 other = 0)
    {
        const auto told = std::tuple(control.id(), fault, other);
        if (!m_told.insert(told).second)
            return;
        const QString where = QStringLiteral("%1x%2").arg(m_screen.width()).arg(m_screen.height())
            + (m_shown.text().isEmpty() ? QString() : QLatin1String(", ") + m_shown.text());
        m_problems.push_back({.object = &control,
                              .place = control.name(),
                              .text = lang(u"%1（%2）。", u"%1 (%2).").arg(what, where),
                              .is_warning = true,
                              .timebar = m_shown.bar ? m_shown.bar->id() : 0,
                              .time = m_shown.bar ? m_shown.bar->current_time() : 0});
    }

    CGuiPlugScene& m_scene;
    CGuiCore& m_core;
    GuiPainter m_painter;
    QRectF m_screen;
    Shown m_shown;
    std::set<std::tuple<quint32, Fault, quint32>> m_told;
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

    /// `visit` answers whether to go on; false when it did not.
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
                bar.set_current_time(moments[k]);
                m_animation.show_frame();
                goes_on = visit(bar, (double(i) + double(k) / double(moments.size())) / double(bars.size()));
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
    LayoutCheck check(scene);
    const auto look = [&](const Shown& shown) {
        for (const QSize& size : sizes)
            check.look(size, shown);
    };
    look({});
    const bool is_whole = !over_time
        || Scrubbing(scene.animation()).each_moment([&](const CTimebar& bar, double share) {
               look({.bar = &bar});
               return progress.go_on(share);
           });
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
    LayoutCheck check(scene);
    check.look(scene.gui_core().screen_size(), {});
    return check.cut_texts();
}

} // namespace tarn
