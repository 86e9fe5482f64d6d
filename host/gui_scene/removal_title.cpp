#include "removal_title.h"

#include "core/field_type.h"
#include "core/language.h"

namespace tarn {

namespace {

constexpr qsizetype most_names = 3;
constexpr int longest_name = 40; ///< UTF-16 units

} // namespace

QString removal_title(const QStringList& names)
{
    QStringList told;
    for (const QString& name : names.mid(0, most_names))
        told.append(lang(u"“%1”", u"\"%1\"").arg(cut_text(name, longest_name)));
    const QString list = told.join(lang(u"、", u", "));
    const qsizetype rest = names.size() - told.size();
    if (rest == 0)
        return lang(u"删除 %1", u"Remove %1").arg(list);
    return VLCMsgIniW::switch_lang(QStringLiteral("删除 %1 等 %2 个对象").arg(list, QString::number(names.size())),
                                   QStringLiteral("Remove %1 and %2 more").arg(list, QString::number(rest)));
}

} // namespace tarn
