#pragma once

#include "core/progress.h"
#include "import/model_importer.h"

#include <QByteArray>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <functional>

namespace tarn {

class Document;

/// "models/tree/" of "models/tree/tree.obj", in which all lies that the model is made of; empty for what lies elsewhere.
QString model_folder(const QString& file);

/// The models of a document's package, read in the background. Each lies in a folder of its own with the files that it
/// was made of: "models/tree/tree.obj", "models/tree/bark.png".
class ModelLibrary {
public:
    explicit ModelLibrary(Document& document);
    ~ModelLibrary();
    ModelLibrary(const ModelLibrary&) = delete;
    ModelLibrary& operator=(const ModelLibrary&) = delete;

    struct Entry {
        ModelPtr model; ///< null while it is read, and when it cannot be
        Status status;  ///< why it cannot be read
    };
    /// What is known of the package's file `file`; reading it begins when it is asked for first.
    const Entry& find(const QString& file);
    /// Waits until all is read that was asked for.
    void finish();
    /// Differs after each time that something was read.
    quint64 revision() const { return m_revision; }
    /// Called when something was read.
    std::function<void()> on_read;

    /// A model that is not part of the package yet.
    struct Import {
        ModelPtr model;
        QString file; ///< of the package
        QMap<QString, QByteArray>
            files; ///< with those beside it that it needs; empty when the package has them already
    };
    /// Reads the file at `path` and those beside it that it names. The document stays as it is; take() adds them.
    Result<Import> import(const QString& path, const Progress& progress) const;
    /// Recorded.
    void take(const Import& import);
    /// Takes the folder of a model, which nothing shows any more, out of the package; recorded.
    void release(const QString& file);

private:
    struct Read {
        QString file;
        QByteArray content;
        Result<ModelPtr> result;
    };
    struct Known {
        Entry entry;
        QByteArray content; ///< that was read, or is being read
    };

    void begin(const QString& file, const QByteArray& content);
    void deliver();
    QMap<QString, QByteArray> files_beside(const QString& folder) const;

    Document& m_document;
    ModelImporter m_importer;
    std::map<QString, Known> m_known;
    quint64 m_revision = 0;
    std::atomic<bool> m_stops = false;
    QMutex m_mutex;           ///< of m_read
    std::vector<Read> m_read; ///< by the thread, and not delivered yet
    QObject m_context;        ///< lives in the document's thread
    QThreadPool m_pool;
};

} // namespace tarn
