#include "plain_tip.h"

#include <QTextDocument>

namespace tarn {

QString plain_tip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace tarn
