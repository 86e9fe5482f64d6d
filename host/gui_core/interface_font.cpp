#include "interface_font.h"

#include <QStringList>

namespace tarn {

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

} // namespace tarn
