#include "plain_tip.h"

#include <QTextDocument>

namespace tarn {

namespace {

constexpr qsizetype most_units = 1000; ///< UTF-16 units; nobody reads more in a tip

} // namespace

QString plain_tip(const QString& text)
{
    const QString head = text.size() > most_units ? text.left(most_units) + QChar(0x2026) : text;
    return Qt::mightBeRichText(head) ? Qt::convertFromPlainText(head) : head;
}

} // namespace tarn
