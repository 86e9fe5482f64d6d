#include "value_sources.h"

#include "animation/anim_time.h"
#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/authored.h"
#include "core/field.h"
#include "core/language.h"
#include "gui_core/control_state.h"
#include "gui_core/gui_style.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/script/event_runner.h"

#include <algorithm>
#include <array>

namespace tarn {

namespace {

constexpr qsizetype longest = 80; ///< characters of a value

QString shown(const FieldBase& field, const Value& value)
{
    const auto* number = std::get_if<qint64>(&value);
    if (number && QLatin1String(field.name()).endsWith(QLatin1String("color")))
        return QStringLiteral("#%1").arg(*number, 8, 16, QLatin1Char('0'));
    const QString text = log_text(value);
    return text.size() > longest ? text.left(longest) + QChar(0x2026) : text;
}

QString time_text(const CTimebar& bar, float time)
{
    return bar.shows_frames() ? lang(u"第 %1 帧", u"frame %1").arg(frame_of(time, bar.frame_rate()))
                              : lang(u"%1 秒", u"%1 s").arg(double(time), 0, 'g', 6);
}

/// Between which keys of the track the bar's time lies.
QString place_text(const CTimebar& bar, const KeyTrack& keys)
{
    const float now = bar.current_time();
    if (keys.find(now) >= 0)
        return lang(u"关键帧 %1", u"the key at %1").arg(time_text(bar, now));
    const qsizetype next = keys.first_from(now);
    if (next == 0)
        return lang(u"第一个关键帧（%1）之前", u"before the first key, at %1").arg(time_text(bar, keys.first_time()));
    const QString before = time_text(bar, keys.time(next - 1));
    if (next == keys.size())
        return lang(u"最后一个关键帧（%1）之后", u"after the last key, at %1").arg(before);
    return lang(u"关键帧 %1 与 %2 之间", u"between the keys at %1 and %2").arg(before, time_text(bar, keys.time(next)));
}

void add_timebars(CAnimationScene& animation, const ModelObject& object, const FieldBase& field, QStringList& lines)
{
    const auto channel = animation.channel_of(object, field.key());
    if (!channel)
        return;
    const auto driving = animation.driving(object, field.key());
    if (driving && !driving->is_recorded)
        lines << lang(u"已修改，尚未记录", u"Changed and not recorded");
    for (const CTimebar* bar : animation.bars()) {
        const CTimerObject* timer = bar->SearchItemUsage(object);
        const CTVar* keys = timer && timer->is_on(*channel) ? timer->channel_variable(*channel) : nullptr;
        if (!keys || keys->keys().is_empty())
            continue;
        const QString text
            = lang(u"时间轴“%1”，%2", u"Timebar \"%1\", %2").arg(bar->name(), place_text(*bar, keys->keys()));
        lines << (driving && driving->bar == bar ? text : text + lang(u"（现在不起作用）", u" (has no effect now)"));
    }
}

/// Whether an attribute that has its default takes the style's instead.
bool takes_style(FieldKey field)
{
    using S = StaticState;
    using E = ControlExtras;
    static const std::array styled{key<&S::text_color>,  key<&S::font_size>,         key<&S::bold>,
                                   key<&S::shadow>,      key<&E::style_images>,      key<&E::style_colors>,
                                   key<&E::font_family>, key<&E::style_text_colors>, key<&E::font_italic>};
    return std::find(styled.begin(), styled.end(), field) != styled.end();
}

QString style_text(const CGuiCore& core)
{
    const CGuiStyle* worn = core.worn_style();
    const QString style = worn ? lang(u"风格“%1”", u"The style \"%1\"").arg(worn->name()) : lang(u"样式", u"The style");
    return core.scene_style() == worn ? style : style + lang(u"（已修改）", u" (changed)");
}

} // namespace

QStringList value_sources(CGuiPlugScene& scene, const ModelObject& object, const FieldBase& field)
{
    QStringList lines{lang(u"现在的值：%1", u"Now: %1").arg(shown(field, object.property(field)))};
    add_timebars(scene.animation(), object, field, lines);
    const ObjectState& authored = Authored::state(object);
    if (!field.is_default(authored))
        lines << lang(u"作者设置：%1", u"Set by the author: %1").arg(shown(field, Authored::property(object, field)));
    if (takes_style(field.key()))
        lines << style_text(scene.gui_core());
    else if (const Value usual = field.default_value(); !std::holds_alternative<std::monostate>(usual))
        lines << lang(u"默认值：%1", u"Default: %1").arg(shown(field, usual));
    return lines;
}

} // namespace tarn
