#include "dxut_progress.h"

#include "gui_core.h"

using tarn::ProgressState;

namespace {

QString number(double value, bool integer)
{
    return integer ? QString::number(qint64(value)) : QString::number(value, 'f', 2);
}

} // namespace

QString CDXUTProgress::shown_text() const
{
    const auto& s = state<ProgressState>();
    const QString percent = number(double(s.percent), s.integer_display) + QLatin1Char('%');
    if (!s.info_display)
        return s.percent_display ? percent : s.text;
    QString message = s.message;
    message.replace(QLatin1String("<num>"), number(double(s.percent) * s.total / 100, s.integer_display));
    message.replace(QLatin1String("<total>"), QString::number(s.total));
    message.replace(QLatin1String("<percent>"), percent);
    return message;
}
