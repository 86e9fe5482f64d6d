#include "dxut_progress.h"

#include "gui_core.h"

#include <algorithm>

using tarn::ProgressState;

namespace {

QString number(double value, bool integer)
{
    return integer ? QString::number(qint64(value)) : QString::number(value, 'f', 2);
}

} // namespace

CDXUTProgress::CDXUTProgress(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new ProgressState) {}

bool CDXUTProgress::SetPersent(float percent)
{
    return change<ProgressState>(&ProgressState::percent, std::clamp(percent, 0.f, 100.f));
}

bool CDXUTProgress::SetTotalNum(int total)
{
    return change<ProgressState>(&ProgressState::total, std::clamp(total, 0, 999999));
}

bool CDXUTProgress::SetBorder(int pixels)
{
    return change<ProgressState>(&ProgressState::border, std::clamp(pixels, 0, 10));
}

bool CDXUTProgress::SetShowMessage(const QString& format)
{
    return change<ProgressState>(&ProgressState::message, format);
}

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
