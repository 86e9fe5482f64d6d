#include "widgets/iconfun.h"

#include "widgets/icon_engine.h"
#include "widgets/theme.h"

#include <QFile>
#include <QHash>
#include <QStandardPaths>

namespace iconfun {
namespace {

const QLatin1String own_prefix("own:");

const char placeholder_svg[]
    = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 16 16' fill='none' stroke='currentColor'>"
      "<rect x='2.5' y='2.5' width='11' height='11' rx='1.5' stroke-dasharray='2 1.5' stroke-opacity='0.7'/>"
      "<path d='M5.5 10.5 L10.5 5.5' stroke-opacity='0.7'/></svg>";

struct Table {
    QHash<int, QString> names;
    bool is_read = false;
};

Table& table()
{
    static Table the_table;
    return the_table;
}

const QHash<int, QString>& names()
{
    Table& known = table();
    if (known.is_read)
        return known.names;
    QFile file(QStringLiteral(":/icons/icons.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return known.names;
    known.is_read = true;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).section(u'#', 0, 0).simplified();
        bool is_number = false;
        const int number = line.section(u' ', 0, 0).toInt(&is_number);
        const QString name = line.section(u' ', 1);
        if (is_number && !name.isEmpty())
            known.names.insert(number, name);
    }
    return known.names;
}

// A session without a desktop (a headless one) looks for icon themes nowhere.
void ensure_theme()
{
    QStringList paths = QIcon::themeSearchPaths();
    const QStringList wanted = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)
        + QStringList{QStringLiteral("/usr/share")};
    for (const QString& folder : wanted) {
        const QString icons = folder + QStringLiteral("/icons");
        if (!paths.contains(icons))
            paths.append(icons);
    }
    if (paths != QIcon::themeSearchPaths())
        QIcon::setThemeSearchPaths(paths);
    if (!QIcon::themeName().startsWith(QStringLiteral("breeze")))
        use_icon_theme(tarn::is_dark());
}

QIcon from_svg(const QByteArray& svg)
{
    return QIcon(new tarn::SvgIconEngine(svg));
}

QIcon found_icon(const QString& name)
{
    if (!name.startsWith(own_prefix)) {
        ensure_theme();
        return QIcon::hasThemeIcon(name) ? QIcon::fromTheme(name) : QIcon();
    }
    QFile file(QStringLiteral(":/icons/") + name.mid(own_prefix.size()));
    return file.open(QIODevice::ReadOnly) ? from_svg(file.readAll()) : QIcon();
}

QIcon or_placeholder(const QIcon& found)
{
    return found.isNull() ? from_svg(QByteArray(placeholder_svg)) : found;
}

} // namespace

QIcon icon(int number)
{
    return or_placeholder(found_icon(names().value(number)));
}

QIcon named(const QString& freedesktop_name)
{
    return or_placeholder(freedesktop_name.startsWith(own_prefix) ? QIcon() : found_icon(freedesktop_name));
}

bool has_icon(int number)
{
    const QString name = names().value(number);
    return !name.isEmpty() && !found_icon(name).isNull();
}

QPixmap pixmap(int number, int size, qreal dpr)
{
    return icon(number).pixmap(QSize(size, size), dpr);
}

void use_icon_theme(bool dark)
{
    QIcon::setThemeName(dark ? QStringLiteral("breeze-dark") : QStringLiteral("breeze"));
    QIcon::setFallbackThemeName(QStringLiteral("breeze"));
}

void reload()
{
    table() = Table();
}

} // namespace iconfun
