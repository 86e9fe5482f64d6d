#include "timeline_colors.h"

#include "animation/animation_target.h"
#include "widgets/theme.h"

#include <QPalette>

namespace tarn {

namespace {

QColor mixed(const QColor& under, const QColor& over, double part)
{
    const auto mix = [part](double a, double b) { return float(a + part * (b - a)); };
    return QColor::fromRgbF(mix(under.redF(), over.redF()), mix(under.greenF(), over.greenF()),
                            mix(under.blueF(), over.blueF()));
}

} // namespace

TimelineColors::TimelineColors(const QPalette& palette)
    : dark(palette.base().color().lightness() < 128),
      background(palette.base().color()),
      ruler(mixed(palette.window().color(), background, 0.25)),
      stripe(palette.alternateBase().color()),
      text(palette.text().color()),
      dim_text(mixed(background, text, dark ? 0.58 : 0.62)),
      accent(dark ? QColor(0x5b, 0x9b, 0xf5) : QColor(0x2f, 0x6f, 0xd6))
{
    outside = mixed(background, dark ? Qt::black : palette.window().color(), dark ? 0.3 : 0.75);
    line = mixed(background, text, dark ? 0.2 : 0.17);
    grid = mixed(background, text, dark ? 0.09 : 0.075);
    key = mixed(background, text, dark ? 0.72 : 0.62);
    key_edge = dark ? QColor(0x14, 0x15, 0x18) : QColor(0xff, 0xff, 0xff);
    selected = dark ? QColor(0xff, 0xb3, 0x40) : QColor(0xf0, 0x8c, 0x00);
    selected_edge = dark ? QColor(0xff, 0xf2, 0xdc) : QColor(0x5a, 0x33, 0x00);
    held = mixed(background, text, dark ? 0.34 : 0.3);
    script = dark ? QColor(0xc3, 0x95, 0xf2) : QColor(0x83, 0x46, 0xc4);
    warning = readable_on(QColor(0xe5, 0x48, 0x4d), background, 4.5);
    end_box = dark ? QColor(0x4a, 0x53, 0x6b) : QColor(0x6b, 0x79, 0x99);
    end_box_lit = dark ? QColor(0x5f, 0x80, 0xc9) : QColor(0x3b, 0x74, 0xc9);
    parts[0] = dark ? QColor(0xf2, 0x6d, 0x6d) : QColor(0xd6, 0x3a, 0x3a);
    parts[1] = dark ? QColor(0x6c, 0xc9, 0x6c) : QColor(0x2f, 0x9a, 0x3c);
    parts[2] = dark ? QColor(0x6c, 0xa4, 0xf5) : QColor(0x2f, 0x6f, 0xd6);
}

QColor TimelineColors::faint(const QColor& color, double part) const
{
    return mixed(background, color, part);
}

QColor TimelineColors::of_type(TimerObjectType type) const
{
    switch (type) {
    case TimerObjectType::Script: return script;
    case TimerObjectType::Control: return dark ? QColor(0x45, 0xbd, 0xc9) : QColor(0x14, 0x8a, 0x99);
    case TimerObjectType::Dialog: return accent;
    case TimerObjectType::Camera: return dark ? QColor(0xe6, 0x8a, 0xb8) : QColor(0xb8, 0x3f, 0x7d);
    case TimerObjectType::Model:
    case TimerObjectType::Panel:
    case TimerObjectType::Skeleton:
    case TimerObjectType::AniModel: break;
    }
    return dark ? QColor(0x8f, 0xc2, 0x6c) : QColor(0x55, 0x8b, 0x2f);
}

} // namespace tarn
