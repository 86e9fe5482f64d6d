#include "model_folder.h"

#include "store/plain_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <assimp/MemoryIOWrapper.h>

namespace tarn {

namespace {

QString cleaned(QString name)
{
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return QDir::cleanPath(name);
}

QString bare(const QString& name)
{
    return name.mid(name.lastIndexOf(QLatin1Char('/')) + 1);
}

} // namespace

ModelFolder::ModelFolder(const QString& path)
{
    // A link's folder is not the model's.
    const QFileInfo file(QFileInfo(path).canonicalFilePath());
    m_folder = file.path();
    m_main = file.fileName();
}

QByteArray ModelFolder::read_one(const QString& name)
{
    if (const auto known = m_files.constFind(name); known != m_files.constEnd())
        return *known;
    if (name.isEmpty() || name.size() > ModelLimits::name_length || m_files.size() > ModelLimits::sources)
        return {};
    QByteArray content;
    if (const QString path = file_inside(m_folder, name); !path.isNull())
        if (auto read = read_plain_file(path, m_left))
            content = std::move(read.value());
    m_left -= content.size();
    return *m_files.insert(name, content);
}

QByteArray ModelFolder::read(const QString& name)
{
    const QString clean = cleaned(name);
    QByteArray content = QDir::isAbsolutePath(clean) ? QByteArray() : read_one(clean);
    if (content.isNull() && bare(clean) != clean)
        content = read_one(bare(clean));
    return content;
}

std::vector<ModelSource> ModelFolder::sources() const
{
    std::vector<ModelSource> sources;
    for (auto file = m_files.begin(); file != m_files.end(); ++file)
        if (file.key() != m_main)
            sources.push_back(
                {file.key(),
                 file->isNull() ? QByteArray() : QCryptographicHash::hash(*file, QCryptographicHash::Sha256)});
    return sources;
}

bool ModelFolderSystem::Exists(const char* name) const
{
    return !m_folder.read(QString::fromUtf8(name)).isNull();
}

Assimp::IOStream* ModelFolderSystem::Open(const char* name, const char* mode)
{
    if (!mode || mode[0] != 'r')
        return nullptr;
    const QByteArray content = m_folder.read(QString::fromUtf8(name));
    if (content.isNull())
        return nullptr;
    // The folder keeps the bytes as long as the import lasts.
    return new Assimp::MemoryIOStream(reinterpret_cast<const std::uint8_t*>(content.constData()),
                                      std::size_t(content.size()));
}

void ModelFolderSystem::Close(Assimp::IOStream* stream)
{
    delete stream;
}

} // namespace tarn
