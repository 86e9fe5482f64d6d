#include "widgets/studio_style.h"

#include "widgets/icon_engine.h"
#include "widgets/style_parts.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace tarn {
namespace {

constexpr int scroll_bar_extent = 11;
constexpr int shortest_slider = 24;

// The slider's ends along the bar: {position, length}.
std::pair<int, int> slider_span(const QStyleOptionSlider& bar, int length)
{
    const qint64 range = qint64(bar.maximum) - bar.minimum;
    if (range <= 0)
        return {0, length};
    const int wanted = int(length * qint64(bar.pageStep) / (range + bar.pageStep));
    const int size = std::min(std::max(wanted, shortest_slider), length);
    const int pos = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition, length - size,
                                                    bar.upsideDown);
    return {pos, size};
}

} // namespace

StudioStyle::StudioStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

int StudioStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_LayoutLeftMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutBottomMargin: return 6;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing: return 4;
    case PM_ScrollBarExtent: return scroll_bar_extent;
    case PM_ScrollBarSliderMin: return shortest_slider;
    case PM_ButtonMargin: return 4;
    case PM_HeaderMargin: return 4;
    case PM_DockWidgetTitleMargin: return 3;
    case PM_DockWidgetSeparatorExtent:
    case PM_SplitterWidth: return 4;
    case PM_TabBarTabHSpace: return 16;
    case PM_TabBarTabVSpace: return 6;
    case PM_MenuBarItemSpacing: return 4;
    case PM_ToolBarIconSize:
    case PM_ButtonIconSize:
    case PM_SmallIconSize: return 16;
    default: return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int StudioStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* data) const
{
    if (hint == SH_ScrollBar_LeftClickAbsolutePosition || hint == SH_EtchDisabledText)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

void StudioStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    if (element == CE_HeaderSection || element == CE_HeaderEmptyArea) {
        QStyleOptionHeader header;
        if (const auto* given = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
            header = *given;
        } else {
            header.QStyleOption::operator=(*option);
            header.position = QStyleOptionHeader::End;
            header.state &= ~(State_Sunken | State_MouseOver);
        }
        draw_header_section(header, *painter);
        return;
    }
    if (element == CE_DockWidgetTitle) {
        const auto* dock = qstyleoption_cast<const QStyleOptionDockWidget*>(option);
        if (dock && !dock->verticalTitleBar) {
            const QRect text = subElementRect(SE_DockWidgetTitleBarText, option, widget).adjusted(3, 0, 0, 0);
            draw_dock_title(*dock, text, *painter);
            return;
        }
    }
    if (element == CE_TabBarTabShape) {
        if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
            draw_tab(*tab, *painter);
            return;
        }
    }
    if (element == CE_ToolBar) {
        draw_tool_bar(*option, *painter);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void StudioStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const
{
    switch (element) {
    case PE_PanelTipLabel: painter->fillRect(option->rect, option->palette.color(QPalette::ToolTipBase)); return;
    case PE_IndicatorCheckBox: draw_check_box(*option, *painter); return;
    case PE_IndicatorRadioButton: draw_radio_button(*option, *painter); return;
    case PE_FrameTabWidget: draw_tab_frame(*option, *painter); return;
    case PE_FrameTabBarBase: return;
    default: break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void StudioStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                     const QWidget* widget) const
{
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || !bar) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    painter->save();
    painter->fillRect(bar->rect, bar->palette.color(QPalette::Window));
    if (bar->maximum > bar->minimum) {
        const bool held = (bar->activeSubControls & SC_ScrollBarSlider) && (bar->state & State_Sunken);
        const bool hovered = (bar->activeSubControls & SC_ScrollBarSlider) && (bar->state & State_MouseOver);
        const QRectF slider
            = QRectF(proxy()->subControlRect(control, option, SC_ScrollBarSlider, widget)).adjusted(2, 2, -2, -2);
        draw_scroll_bar_slider(*bar, slider, held, hovered, *painter);
    }
    painter->restore();
}

QIcon StudioStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const
{
    if (icon == SP_TitleBarCloseButton)
        return close_icon();
    if (icon == SP_TitleBarNormalButton)
        return float_icon();
    return QProxyStyle::standardIcon(icon, option, widget);
}

QPixmap StudioStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap, const QStyleOption* option) const
{
    if (mode != QIcon::Disabled)
        return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
    QPixmap faded(pixmap.size());
    faded.setDevicePixelRatio(pixmap.devicePixelRatio());
    faded.fill(Qt::transparent);
    QPainter painter(&faded);
    painter.setOpacity(SvgIconEngine::disabled_opacity);
    painter.drawPixmap(0, 0, pixmap);
    return faded;
}

QRect StudioStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                  const QWidget* widget) const
{
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const QRect whole = bar->rect;
    const bool lies = bar->orientation == Qt::Horizontal;
    const int length = lies ? whole.width() : whole.height();
    const auto [pos, size] = slider_span(*bar, length);
    const auto span = [&](int from, int extent) {
        const QRect rect = lies ? QRect(whole.left() + from, whole.top(), extent, whole.height())
                                : QRect(whole.left(), whole.top() + from, whole.width(), extent);
        return lies ? visualRect(bar->direction, whole, rect) : rect;
    };
    switch (part) {
    case SC_ScrollBarSlider: return span(pos, size);
    case SC_ScrollBarGroove: return whole;
    case SC_ScrollBarSubPage: return span(0, pos);
    case SC_ScrollBarAddPage: return span(pos + size, length - pos - size);
    default: return {};
    }
}

} // namespace tarn
