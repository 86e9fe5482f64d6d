#include "interface_font.h"

#include <QStringList>

namespace tarn {

namespace {

quint64 revision = 1;

} // namespace

QFont interface_font(int pixel_size, bool bold, const QString& family, bool italic)
{
    QStringList families{QStringLiteral("Noto Sans"), QStringLiteral("Noto Sans CJK SC")};
    if (!family.isEmpty())
        families.prepend(family);
    QFont font(families);
    font.setItalic(italic);
    font.setPixelSize(qMax(1, pixel_size));
    font.setBold(bold);
    return font;
}

void fonts_changed()
{
    ++revision;
}

quint64 fonts_revision()
{
    return revision;
}

} // namespace tarn
