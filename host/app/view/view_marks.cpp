#include "view_marks.h"

#include "core/language.h"

#include <QLabel>
#include <QPalette>
#include <QRegion>
#include <QWidget>

namespace tarn {

namespace {

constexpr int frame_width = 3;  ///< pixels
constexpr int badge_margin = 6; ///< pixels from the view's corner
const QColor preview_color(0xff, 0x8c, 0x1a);
const QColor badge_color(20, 30, 34, 190);

} // namespace

ViewMarks::ViewMarks(QWidget& view) : QObject(&view), m_badge(new QLabel(&view)), m_frame(new QWidget(&view))
{
    for (QWidget* mark : {static_cast<QWidget*>(m_badge), m_frame}) {
        mark->setAttribute(Qt::WA_TransparentForMouseEvents);
        mark->setAutoFillBackground(true);
    }
    QPalette colors = m_badge->palette();
    colors.setColor(QPalette::Window, badge_color);
    colors.setColor(QPalette::WindowText, Qt::white);
    m_badge->setPalette(colors);
    m_badge->setMargin(3);
    m_badge->setObjectName(QStringLiteral("view_badge"));
    colors.setColor(QPalette::Window, preview_color);
    m_frame->setPalette(colors);
    m_frame->setObjectName(QStringLiteral("preview_frame"));
    m_badge->hide();
    m_frame->hide();
}

void ViewMarks::show(const QRect& shown, double zoom, QSize screen, bool preview)
{
    QString text = QStringLiteral("%1 %  %2 × %3").arg(qRound(zoom * 100)).arg(screen.width()).arg(screen.height());
    if (preview)
        text += QStringLiteral("  ") + lang(u"预览", u"Preview");
    m_badge->setText(text);
    m_badge->adjustSize();
    m_badge->show();
    const QRect view = m_badge->parentWidget()->rect();
    m_badge->move((shown & view).bottomRight() - QPoint(badge_margin, badge_margin) - m_badge->rect().bottomRight());
    m_badge->raise();
    m_frame->setGeometry(shown);
    const QRect all = m_frame->rect();
    m_frame->setMask(QRegion(all) - all.adjusted(frame_width, frame_width, -frame_width, -frame_width));
    m_frame->setVisible(preview);
    m_frame->raise();
}

} // namespace tarn
