#pragma once

#include "gui_core/style_state.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <memory>
#include <vector>

class CGuiCore;
class CGuiStyle;

namespace tarn {

/// The styles that lie in files: the user's own, and those that come with the program. They are known by name and are no
/// part of the scene until it takes one on.
class StyleLibrary {
public:
    explicit StyleLibrary(CGuiCore& core) : m_core(core) {}

    /// Where files of saved styles are.
    static QString user_folder();
    static QString file_of(const QString& style);

    /// Looks for the files; styles that were there before keep their objects.
    const QList<CGuiStyle*>& styles();
    /// The file of one of them.
    QString path_of(const CGuiStyle& style) const;

private:
    struct Entry {
        QString path;
        std::shared_ptr<CGuiStyle> style;
    };
    void add(const QString& folder, StyleOrigin origin, std::vector<Entry>& found);

    CGuiCore& m_core;
    std::vector<Entry> m_entries;
    QList<CGuiStyle*> m_styles;
};

} // namespace tarn
