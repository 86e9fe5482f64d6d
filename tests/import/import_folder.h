#pragma once

#include "import/model_importer.h"
#include "support/files.h"

#include <QBuffer>
#include <QImage>

namespace tarn::test {

/// An importer with a folder and a cache of its own.
class ImportFolder {
public:
    ImportFolder() { QDir(m_folder.path()).mkdir(QStringLiteral("cache")); }

    ModelImporter importer(const QString& program = QStringLiteral(TARN_IMPORT)) const
    {
        return ModelImporter(program, cache());
    }
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString cache() const { return path(QStringLiteral("cache")); }
    /// Puts a file there, in folders that are made.
    QString add(const QString& name, const QByteArray& content) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        put(path(name), content);
        return path(name);
    }
    /// A file of the tests or of the samples.
    QString take(const QString& name) const { return add(name, source(name)); }
    static QByteArray source(const QString& name)
    {
        const QString folder = name.endsWith(QStringLiteral(".glb")) ? QStringLiteral(TARN_MODELS)
                                                                     : QStringLiteral(TARN_FILES);
        const QByteArray content = content_of(folder + QLatin1Char('/') + name);
        EXPECT_FALSE(content.isEmpty()) << name.toStdString();
        return content;
    }

private:
    QTemporaryDir m_folder;
};

inline QByteArray png(const QSize& size, const QColor& color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return file;
}

} // namespace tarn::test
