#include "res_handle_man.h"

#include <QDir>
#include <QStringList>

namespace {

QStringList& current_roots()
{
    static QStringList roots;
    return roots;
}

} // namespace

CResHandleMan::CResHandleMan(const QString& root)
{
    current_roots().append(root);
}

CResHandleMan::~CResHandleMan()
{
    current_roots().removeLast();
}

QString CResHandleMan::find(const QString& folder, int number)
{
    const QStringList& roots = current_roots();
    const QStringList patterns{QStringLiteral("%1_*").arg(number), QStringLiteral("%1.*").arg(number)};
    for (auto root = roots.crbegin(); root != roots.crend(); ++root) {
        const QDir dir(*root + QLatin1Char('/') + folder);
        const QStringList found = dir.entryList(patterns, QDir::Files);
        if (!found.isEmpty())
            return dir.filePath(found.first());
    }
    return {};
}
