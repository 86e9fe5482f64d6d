#include "pak_rules.h"

#include "core/language.h"

#include <QStringList>

#include <algorithm>

namespace tarn {

namespace {

bool is_bad_part(const QString& part)
{
    static const QStringList devices{QStringLiteral("con"),  QStringLiteral("prn"),  QStringLiteral("aux"),
                                     QStringLiteral("nul"),  QStringLiteral("com1"), QStringLiteral("com2"),
                                     QStringLiteral("lpt1"), QStringLiteral("lpt2")};
    return part.isEmpty() || part == QLatin1String(".") || part == QLatin1String("..")
        || part.endsWith(QLatin1Char('.')) || part.endsWith(QLatin1Char(' '))
        || devices.contains(part.section(QLatin1Char('.'), 0, 0).toLower());
}

bool is_bad_character(QChar c)
{
    return c.unicode() < 0x20 || c == QLatin1Char('\\') || c == QLatin1Char(':') || c == QLatin1Char('*')
        || c == QLatin1Char('?') || c == QLatin1Char('"') || c == QLatin1Char('<') || c == QLatin1Char('>')
        || c == QLatin1Char('|') || c == QChar::ReplacementCharacter;
}

} // namespace

Status check_entry_name(const QString& name)
{
    QString path = name;
    if (path.endsWith(QLatin1Char('/')))
        path.chop(1); // A folder's own entry.
    const QStringList parts = path.split(QLatin1Char('/'));
    const bool bad = name.size() > 1024 || std::any_of(parts.begin(), parts.end(), is_bad_part)
        || std::any_of(name.begin(), name.end(), is_bad_character);
    if (!bad)
        return {};
    return Status::error(lang(u"条目名称“%1”不安全（不能离开文件包所在文件夹）",
                              u"the entry name \"%1\" is not safe (names have to stay inside the package)")
                             .arg(name.left(200)));
}

Status check_entry_size(const QString& name, quint64 packed, quint64 unpacked)
{
    const bool bomb = unpacked > PakLimits::unsuspicious_size && unpacked / (packed + 1) > PakLimits::max_ratio;
    if (unpacked <= PakLimits::max_entry_size && !bomb)
        return {};
    return Status::error(
        lang(u"条目“%1”过大（%2 字节）", u"the entry \"%1\" is too large (%2 bytes)").arg(name).arg(unpacked));
}

Status check_total_size(const QString& largest, quint64 packed, quint64 unpacked)
{
    const bool bomb = unpacked > PakLimits::unsuspicious_total && unpacked / (packed + 1) > PakLimits::max_total_ratio;
    if (unpacked <= PakLimits::max_total_size && !bomb)
        return {};
    return Status::error(lang(u"解压后内容过大（%1 字节，最大的条目是“%2”）",
                              u"its content is too large (%1 bytes unpacked, the most of them in \"%2\")")
                             .arg(unpacked)
                             .arg(largest));
}

} // namespace tarn
