#include "tex_file_man.h"

#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"
#include "picture_file.h"

#include <QFileInfo>

#include <algorithm>

QString CTexFileMan::find_tex_file_from_absolute_filename(const QString& path) const
{
    const QStringList names = m_core.texture_names();
    const auto find = [&](const auto& fits) {
        const auto found = std::find_if(names.begin(), names.end(), fits);
        return found == names.end() ? QString() : *found;
    };
    const auto encoded = tarn::read_picture_file(path);
    const auto& files = m_core.document().files();
    if (encoded)
        if (const QString same = find(
                [&](const QString& name) { return files.value(tarn::texture_entry(name)) == encoded.value(); });
            !same.isNull())
            return same;
    const QString file_name = QFileInfo(path).fileName();
    return find([&](const QString& name) { return name.section(QLatin1Char('/'), -1) == file_name; });
}
