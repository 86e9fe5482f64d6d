#include "style_library.h"

#include "core/appinfo.h"
#include "gui_core/gui_style.h"
#include "style_file.h"

#include <QDir>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr int most_files = 1000; ///< of a folder that are listed

} // namespace

QString StyleLibrary::user_folder()
{
    return appinfo::get_user_path(QStringLiteral("styles"));
}

QString StyleLibrary::file_of(const QString& style)
{
    return user_folder() + QLatin1Char('/') + style + QStringLiteral(".style");
}

void StyleLibrary::add(const QString& folder, StyleOrigin origin, std::vector<Entry>& found)
{
    const QFileInfoList files = QDir(folder).entryInfoList({QStringLiteral("*.style")}, QDir::Files, QDir::Name);
    for (qsizetype i = 0; i < std::min<qsizetype>(files.size(), most_files); ++i) {
        const QString path = files[i].absoluteFilePath();
        const auto known = std::find_if(m_entries.begin(), m_entries.end(),
                                        [&](const Entry& entry) { return entry.path == path; });
        if (known != m_entries.end()) {
            found.push_back(*known);
            continue;
        }
        auto* state = new StyleState;
        state->name = style_name_of(path);
        state->origin = int(origin);
        found.push_back({path, std::make_shared<CGuiStyle>(m_core, StatePtr(state))});
    }
}

const QList<CGuiStyle*>& StyleLibrary::styles()
{
    std::vector<Entry> found;
    add(user_folder(), StyleOrigin::User, found);
    add(appinfo::get_data_path(QStringLiteral("styles")), StyleOrigin::Program, found);
    m_entries = std::move(found);
    m_styles.clear();
    for (const Entry& entry : m_entries)
        m_styles.append(entry.style.get());
    return m_styles;
}

QString StyleLibrary::path_of(const CGuiStyle& style) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& entry) { return entry.style.get() == &style; });
    return found == m_entries.end() ? QString() : found->path;
}

} // namespace tarn
