#include "filedlg.h"

#include "boxes.h"
#include "core/language.h"

#include <QDir>
#include <QFileInfo>

using tarn::lang;

void filter_man::add_filter(const QString& label, const QString& patterns)
{
    if (m_filter.endsWith(QLatin1String("||")))
        m_filter.chop(1);
    m_filter += label + patterns;
}

namespace filedlg {

QString pop_file_dlg(const filter_man& filter, int mode, QWidget* parent, const QString& initial)
{
    const bool save = mode == mode_save;
    const QString chosen = tarn::boxes::file(parent,
                                             {.save = save,
                                              .title = save ? lang(u"保存", u"Save") : lang(u"打开", u"Open"),
                                              .filter = filter.filter(),
                                              .initial = initial});
    if (chosen.isEmpty())
        return {};
    const QString suffix = QFileInfo(filter.filter().section(QLatin1Char('|'), 1, 1)).suffix();
    const bool complete = !save || suffix.isEmpty() || suffix == QLatin1String("*")
        || !QFileInfo(chosen).suffix().isEmpty();
    return QDir().absoluteFilePath(complete ? chosen : chosen + QLatin1Char('.') + suffix);
}

QString pop_open_dlg_img(QWidget* parent)
{
    filter_man filter;
    filter.add_filter(lang(u"图片", u"Pictures"), QStringLiteral("(*.png;*.jpg;*.bmp)|*.png;*.jpg;*.jpeg;*.bmp||"));
    return pop_file_dlg(filter, mode_open, parent);
}

} // namespace filedlg
