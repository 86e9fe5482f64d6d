#pragma once

#include "models/model.h"

#include <QByteArray>
#include <QString>

namespace tarn {

/// Models that were imported before, in a folder of the user's. An entry that is damaged, or that was made with other
/// files beside the model's own than are there now, is none.
class ImportCache {
public:
    static constexpr qint64 max_bytes = qint64(1) << 30;

    explicit ImportCache(QString folder) : m_folder(std::move(folder)) {}

    /// Of a model's file by its content and layout ("glb"); `folder` is the one that it stands in. Null when there is no
    /// entry.
    ModelPtr find(const QByteArray& content, const QString& layout, const QString& folder) const;
    /// Keeps what an import wrote. Where that fails the next import takes longer, and nothing else.
    void keep(const QByteArray& content, const QString& layout, const QByteArray& model) const;

private:
    QString path_of(const QByteArray& content, const QString& layout) const;
    void remove_oldest() const;

    QString m_folder;
};

} // namespace tarn
