#include "texture_name.h"

#include <QFileInfo>

namespace tarn {

QString free_picture_name(const QString& taken, const std::function<bool(const QString&)>& is_free)
{
    const QFileInfo info(taken);
    const QString folder = info.path() == QLatin1String(".") ? QString() : info.path() + QLatin1Char('/');
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    for (int i = 2;; ++i) {
        const QString name = folder + info.completeBaseName() + QLatin1Char('-') + QString::number(i) + suffix;
        if (is_free(name))
            return name;
    }
}

} // namespace tarn
