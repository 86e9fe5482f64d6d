#include "widgets/theme.h"

#include "widgets/iconfun.h"
#include "widgets/studio_style.h"

#include <QApplication>
#include <QPalette>

#include <cmath>

namespace tarn {
namespace {

struct Scheme {
    QRgb window, base, alternate, button, text, dim_text, placeholder;
    QRgb light, midlight, mid, dark, shadow;
    QRgb accent, accent_text, accent_inactive, link, visited;
    QRgb tip, tip_text;
};

constexpr Scheme light_scheme{.window = 0xfff1f2f4,
                              .base = 0xffffffff,
                              .alternate = 0xfff6f7f9,
                              .button = 0xfffbfbfc,
                              .text = 0xff1f2328,
                              .dim_text = 0xff9a9fa6,
                              .placeholder = 0xff8b9098,
                              .light = 0xffffffff,
                              .midlight = 0xffe6e8eb,
                              .mid = 0xffc4c7cc,
                              .dark = 0xffa0a4aa,
                              .shadow = 0xff6c7076,
                              .accent = 0xff3b74c9,
                              .accent_text = 0xffffffff,
                              .accent_inactive = 0xff7d9cca,
                              .link = 0xff2a66bd,
                              .visited = 0xff7a4fae,
                              .tip = 0xff2f3237,
                              .tip_text = 0xfff2f3f5};

constexpr Scheme dark_scheme{.window = 0xff2b2d31,
                             .base = 0xff212226,
                             .alternate = 0xff25262a,
                             .button = 0xff3a3c42,
                             .text = 0xffdddfe3,
                             .dim_text = 0xff74777d,
                             .placeholder = 0xff84878e,
                             .light = 0xff4c4f56,
                             .midlight = 0xff36383d,
                             .mid = 0xff4a4d54,
                             .dark = 0xff1a1b1e,
                             .shadow = 0xff111214,
                             .accent = 0xff3f73bf,
                             .accent_text = 0xffffffff,
                             .accent_inactive = 0xff41566f,
                             .link = 0xff7aaef0,
                             .visited = 0xffb79be6,
                             .tip = 0xff45484f,
                             .tip_text = 0xffe8eaed};

QPalette palette_of(const Scheme& scheme)
{
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, QRgb color) { palette.setColor(role, QColor(color)); };
    set(QPalette::Window, scheme.window);
    set(QPalette::WindowText, scheme.text);
    set(QPalette::Base, scheme.base);
    set(QPalette::AlternateBase, scheme.alternate);
    set(QPalette::Text, scheme.text);
    set(QPalette::PlaceholderText, scheme.placeholder);
    set(QPalette::Button, scheme.button);
    set(QPalette::ButtonText, scheme.text);
    set(QPalette::BrightText, 0xffe5484d);
    set(QPalette::Light, scheme.light);
    set(QPalette::Midlight, scheme.midlight);
    set(QPalette::Mid, scheme.mid);
    set(QPalette::Dark, scheme.dark);
    set(QPalette::Shadow, scheme.shadow);
    set(QPalette::Highlight, scheme.accent);
    set(QPalette::HighlightedText, scheme.accent_text);
    set(QPalette::Link, scheme.link);
    set(QPalette::LinkVisited, scheme.visited);
    set(QPalette::ToolTipBase, scheme.tip);
    set(QPalette::ToolTipText, scheme.tip_text);

    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(scheme.accent_inactive));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText,
                            QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited})
        palette.setColor(QPalette::Disabled, role, QColor(scheme.dim_text));
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(scheme.window));
    palette.setColor(QPalette::Disabled, QPalette::Button, QColor(scheme.window));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(scheme.mid));
    return palette;
}

double luminance(const QColor& color)
{
    const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast_between(const QColor& a, const QColor& b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

bool has_dark_window(const QPalette& palette)
{
    return luminance(palette.color(QPalette::Window)) < luminance(palette.color(QPalette::WindowText));
}

} // namespace

QPalette light_palette()
{
    return palette_of(light_scheme);
}

QPalette dark_palette()
{
    return palette_of(dark_scheme);
}

void apply_theme(QApplication& app, Theme theme)
{
    if (!qobject_cast<StudioStyle*>(QApplication::style()))
        app.setStyle(new StudioStyle);
    bool dark = theme == Theme::Dark;
    if (theme == Theme::System) {
        // A palette without settings of its own brings the desktop's back.
        QApplication::setPalette(QPalette());
        dark = has_dark_window(QApplication::palette());
    }
    // The icons first: widgets look for theirs anew when they hear of the palette.
    iconfun::use_icon_theme(dark);
    QApplication::setPalette(dark ? dark_palette() : light_palette());
}

bool is_dark()
{
    return has_dark_window(QGuiApplication::palette());
}

QColor readable_on(const QColor& color, const QColor& background, double contrast)
{
    const double goal = luminance(background) < 0.18 ? 1 : 0;
    for (int step = 0; step <= 10; ++step) {
        const double part = step / 10.0;
        const auto move = [&](double channel) { return float(channel + (goal - channel) * part); };
        const QColor moved = QColor::fromRgbF(move(color.redF()), move(color.greenF()), move(color.blueF()));
        if (contrast_between(moved, background) >= contrast)
            return moved;
    }
    return goal > 0 ? QColor(Qt::white) : QColor(Qt::black);
}

} // namespace tarn
