#include "render.h"

#include "core/language.h"
#include "engine/scene_plug.h"
#include "engine/world_edit.h"
#include "studio.h"
#include "view/view3d.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr QSize usual_size(1280, 720);
constexpr int most_pictures = 100'000;
constexpr double largest_side = 16384; ///< pixels
constexpr auto longest_wait = std::chrono::seconds(10);

/// The drawing of one command line, picture by picture.
class Rendering {
public:
    Rendering(Studio& studio, const CommandLine& line) : m_studio(studio), m_line(line), m_screen(line.picture.screen)
    {
        if (m_screen.isEmpty())
            m_screen = line.size.isEmpty() ? usual_size : line.size;
    }

    Status run()
    {
        wait_for_models(m_studio.world());
        const PictureOptions& picture = m_line.picture;
        if (!picture.from && picture.timebar.isEmpty())
            return draw(m_line.render_target);
        const double from = picture.from.value_or(0);
        const auto length = m_studio.scene()->show_time(picture.timebar, from);
        if (!length)
            return length.status();
        if (!picture.until)
            return check_time(from, length.value()) ? draw(m_line.render_target) : too_late(length.value());
        if (!check_time(*picture.until, length.value()))
            return too_late(length.value());
        return draw_frames(from, *picture.until);
    }

private:
    static bool check_time(double time, double length) { return time <= length + 1e-6; }
    static Status too_late(double length)
    {
        return Status::error(lang(u"时间轴只有 %1 秒", u"the timebar is only %1 s long").arg(length));
    }

    Status draw_frames(double from, double until)
    {
        const double count = std::floor((until - from) * m_line.picture.rate + 1e-6) + 1;
        if (count > most_pictures)
            return Status::error(
                lang(u"图片过多（最多 %1 张）", u"there would be too many pictures (at most %1)").arg(most_pictures));
        const QFileInfo target(m_line.render_target);
        for (int i = 0; i < int(count); ++i) {
            const auto shown = m_studio.scene()->show_time(m_line.picture.timebar, from + i / m_line.picture.rate);
            if (!shown)
                return shown.status();
            const QString name = QStringLiteral("%1-%2.%3")
                                     .arg(target.completeBaseName())
                                     .arg(i, 4, 10, QLatin1Char('0'))
                                     .arg(target.suffix());
            if (auto status = draw(target.path() + QLatin1Char('/') + name); !status)
                return status;
        }
        return {};
    }
    Status draw(const QString& path)
    {
        QRectF part{QPointF(), QSizeF(m_screen)};
        if (!m_line.picture.dialog.isEmpty()) {
            const auto place = m_studio.scene()->show_alone(m_line.picture.dialog, m_screen);
            if (!place)
                return place.status();
            part = place.value() & part;
        }
        if (part.isEmpty())
            return Status::error(lang(u"窗口不在屏幕上", u"the dialog is not on the screen"));
        QImageWriter writer(path, "PNG");
        if (writer.write(settled(part)))
            return {};
        return Status::error(
            lang(u"无法写入图片 %1：%2", u"the picture %1 cannot be written: %2").arg(path, writer.errorString()));
    }
    /// With the first frames of movies, as far as they come in time.
    QImage settled(const QRectF& part)
    {
        m_studio.scene()->prepare_picture(m_screen);
        const QImage picture = fitted(part);
        if (!m_studio.scene()->awaits_picture() || m_gave_up)
            return picture;
        QTimer deadline;
        deadline.setSingleShot(true);
        deadline.start(longest_wait);
        while (m_studio.scene()->awaits_picture() && deadline.isActive())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        m_gave_up = m_studio.scene()->awaits_picture(); // The other pictures need not wait for it as well.
        return fitted(part);
    }
    /// That part of the screen in the size that is asked for: drawn in it rather than enlarged, as far as that is sane.
    QImage fitted(const QRectF& part) const
    {
        const QSizeF size = m_line.size.isEmpty() ? part.size() : QSizeF(m_line.size);
        const double scale = std::min(size.width() / part.width(), size.height() / part.height());
        const double most = largest_side / std::max(m_screen.width(), m_screen.height());
        const double drawn = std::max(1.0, std::min(scale, most)); // Smaller pictures are reduced.
        QImage screen = CView3D::render(m_studio.world(), m_screen, drawn);
        screen.setDevicePixelRatio(1);
        if (screen.size() == size.toSize() && part.size() == QSizeF(m_screen))
            return screen;
        QImage picture(size.toSize(), QImage::Format_RGB32);
        picture.fill(Qt::black);
        QRectF target{QPointF(), part.size() * scale};
        target.moveCenter(QRectF(picture.rect()).center());
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, screen, QRectF(part.topLeft() * drawn, part.size() * drawn));
        return picture;
    }

    Studio& m_studio;
    const CommandLine& m_line;
    QSize m_screen;
    bool m_gave_up = false; ///< a movie did not come in time
};

} // namespace

Status render_to_files(Studio& studio, const CommandLine& line)
{
    return Rendering(studio, line).run();
}

} // namespace tarn
