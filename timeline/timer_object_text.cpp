#include "timer_object_text.h"

#include "animation/animation_target.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "core/language.h"

#include <iterator>

namespace tarn {

QString target_text(const CTimerObject& object)
{
    struct Prefix {
        const char16_t* chinese;
        const char16_t* english;
    };
    // In the order of TimerObjectType.
    static constexpr Prefix prefixes[] = {
        {u"脚本:", u"Script:"}, {u"模型:", u"Model:"}, {u"控件:", u"Control:"},  {u"窗口:", u"Dialog:"},
        {u"相机:", u"Camera:"}, {u"面板:", u"Panel:"}, {u"骨骼:", u"Skeleton:"}, {u"模型:", u"Model:"},
    };
    static_assert(std::size(prefixes) == timer_object_type_count);
    const auto type = std::size_t(object.type());
    if (type >= std::size(prefixes))
        return QStringLiteral("Error");
    return lang(prefixes[type].chinese, prefixes[type].english)
        + (object.is_broken() ? lang(u"（已删除）", u"(deleted)") : object.name());
}

QString variable_text(const CTVar& variable)
{
    if (!variable.channel())
        return variable.name();
    const ChannelRow& row = channel_row(*variable.channel());
    return lang(row.chinese, row.english);
}

} // namespace tarn
