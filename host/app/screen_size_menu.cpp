#include "screen_size_menu.h"

#include "core/language.h"
#include "frame/boxes.h"
#include "frame/str_input.h"
#include "view/view3d.h"

#include <QActionGroup>
#include <QMenu>
#include <QRegularExpression>

#include <algorithm>

using tarn::lang;

namespace {

struct Device {
    const char16_t* chinese;
    const char16_t* english;
    QSize size;
    bool begins_group;
};

constexpr Device devices[] = {
    {u"手机竖屏", u"Phone, portrait", {360, 640}, true},
    {u"手机竖屏", u"Phone, portrait", {390, 844}, false},
    {u"手机横屏", u"Phone, landscape", {640, 360}, false},
    {u"手机横屏", u"Phone, landscape", {844, 390}, false},
    {u"平板竖屏", u"Tablet, portrait", {768, 1024}, true},
    {u"平板横屏", u"Tablet, landscape", {1024, 768}, false},
    {u"平板横屏", u"Tablet, landscape", {1280, 800}, false},
    {u"高清", u"HD", {1280, 720}, true},
    {u"笔记本", u"Laptop", {1366, 768}, false},
    {u"高清+", u"HD+", {1600, 900}, false},
    {u"全高清", u"Full HD", {1920, 1080}, false},
    {u"2K", u"QHD", {2560, 1440}, false},
    {u"超宽屏", u"Ultrawide", {3440, 1440}, false},
    {u"4K", u"4K", {3840, 2160}, false},
};

QString other_text()
{
    return lang(u"其他(&O)...", u"&Other...");
}

QString size_text(QSize size)
{
    return QStringLiteral("%1 × %2").arg(size.width()).arg(size.height());
}

} // namespace

ScreenSizeMenu::ScreenSizeMenu(CView3D& view, QMenu& menu)
    : QObject(&menu), m_view(view), m_choices(new QActionGroup(this))
{
    add_choice(menu, lang(u"与视图相同(&V)", u"As the &View"), QSize())->setChecked(true);
    for (const Device& device : devices) {
        if (device.begins_group)
            menu.addSeparator();
        add_choice(menu, size_text(device.size) + QStringLiteral("  ") + lang(device.chinese, device.english),
                   device.size);
    }
    menu.addSeparator();
    m_other = menu.addAction(other_text());
    m_other->setCheckable(true);
    m_other->setObjectName(QStringLiteral("screen_other"));
    m_choices->addAction(m_other);
    connect(m_other, &QAction::triggered, this, &ScreenSizeMenu::ask);
}

QAction* ScreenSizeMenu::add_choice(QMenu& menu, const QString& text, QSize size)
{
    QAction* action = menu.addAction(text);
    action->setCheckable(true);
    action->setData(size);
    action->setObjectName(size.isEmpty() ? QStringLiteral("screen_as_view")
                                         : QStringLiteral("screen_%1x%2").arg(size.width()).arg(size.height()));
    m_choices->addAction(action);
    connect(action, &QAction::triggered, this, [this, size] { choose(size); });
    return action;
}

void ScreenSizeMenu::choose(QSize size)
{
    const QList<QAction*> actions = m_choices->actions();
    const auto listed = std::find_if(actions.begin(), actions.end(), [&](const QAction* action) {
        return action != m_other && action->data().toSize() == size;
    });
    (listed != actions.end() ? *listed : m_other)->setChecked(true);
    m_other->setText(listed != actions.end() ? other_text() : other_text() + QStringLiteral("  ") + size_text(size));
    m_view.set_screen_size(size);
}

std::optional<QSize> ScreenSizeMenu::parsed(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^\\s*(\\d{1,5})\\s*[xX×*,， ]\\s*(\\d{1,5})\\s*$"));
    const auto match = pattern.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (!match.hasMatch() || size.isEmpty() || size.width() > largest || size.height() > largest)
        return {};
    return size;
}

void ScreenSizeMenu::ask()
{
    const QSize now = m_view.screen_size();
    QString typed = QStringLiteral("%1x%2").arg(now.width()).arg(now.height());
    while (PopDlgStrInput(
        m_view.window(),
        lang(u"屏幕的宽和高（像素），例如 1280x720：", u"Width and height of the screen in pixels, such as 1280x720:"),
        lang(u"屏幕尺寸", u"Screen Size"), typed, typed)) {
        if (const auto size = parsed(typed)) {
            choose(*size);
            return;
        }
        tarn::boxes::error(m_view.window(),
                           lang(u"“%1”不是屏幕尺寸。请输入两个 1 到 %2 之间的整数，例如 1280x720。",
                                u"\"%1\" is not the size of a screen. Type two whole numbers from 1 "
                                u"to %2, such as 1280x720.")
                               .arg(typed)
                               .arg(largest));
    }
    choose(m_view.has_own_screen() ? now : QSize()); // The menu has checked the entry already.
}
