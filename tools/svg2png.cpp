// tarn-svg2png FILE.svg FILE.png [--scale N]: renders a drawing at N times its size; used by the build.

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() != 3 && !(arguments.size() == 5 && arguments.at(3) == QLatin1String("--scale"))) {
        std::fprintf(stderr, "usage: tarn-svg2png FILE.svg FILE.png [--scale N]\n");
        return 2;
    }
    const int scale = arguments.size() == 5 ? qBound(1, arguments.at(4).toInt(), 8) : 1;
    QSvgRenderer renderer(arguments.at(1));
    if (!renderer.isValid()) {
        std::fprintf(stderr, "tarn-svg2png: %s is not an SVG drawing\n", qPrintable(arguments.at(1)));
        return 1;
    }
    QImage image(renderer.defaultSize() * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    if (!image.save(arguments.at(2))) {
        std::fprintf(stderr, "tarn-svg2png: cannot write %s\n", qPrintable(arguments.at(2)));
        return 1;
    }
    return 0;
}
