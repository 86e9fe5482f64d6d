#pragma once

#include <QIcon>
#include <QString>

/// The program's icons, by number. Which number is which icon stands in the resource `:/icons/icons.txt`: lines
/// `<number> <name>`, where the name is one of the freedesktop icon names or `own:<file.svg>` for the resource
/// `:/icons/<file.svg>`; `#` starts a comment. An icon that cannot be found is replaced by a dashed square.
namespace iconfun {

QIcon icon(int number);
QIcon named(const QString& freedesktop_name);
/// Whether the table has this number and its icon can be found.
bool has_icon(int number);
/// `size` is the side of the square in device-independent pixels.
QPixmap pixmap(int number, int size, qreal dpr);

/// Takes freedesktop icons from the theme drawn for dark or for light backgrounds. Icons made before follow.
void use_icon_theme(bool dark);
/// Forgets the table; it is read again when an icon is next asked for. For resources registered late.
void reload();

} // namespace iconfun
