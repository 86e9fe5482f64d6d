// A package's archive: what can be opened is read, written anew and read again with equal content.

#include "fuzz.h"

#include "store/pak_file.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>

namespace {

/// Does not wait for the disk, which has nothing to keep here.
class QuickIo : public tarn::FileIo {
public:
    bool sync(int) override { return true; }
    bool sync_folder(const QString&) override { return true; }
};

struct Content {
    QMap<QString, QByteArray> files;
    QMap<QString, QByteArray> damaged;
    bool operator==(const Content&) const = default;
};

Content read(const CPakFile& package)
{
    Content content;
    for (const QString& name : package.names()) {
        if (const auto whole = package.read_file(name))
            content.files.insert(name, whole.value());
        else if (const auto packed = package.read_packed(name))
            content.damaged.insert(name, packed.value());
    }
    return content;
}

void write_and_compare(const Content& content, const QString& path)
{
    QuickIo io;
    CPakFile out(io);
    require(out.create(path).ok(), "a package can be begun");
    for (auto file = content.files.begin(); file != content.files.end(); ++file)
        require(out.add_file(file.key(), file.value()).ok(), "what was read can be added");
    for (auto entry = content.damaged.begin(); entry != content.damaged.end(); ++entry)
        require(out.add_packed(entry.key(), entry.value()).ok(), "what is damaged can be added");
    require(out.close().ok(), "the package can be written");
    CPakFile again;
    require(again.open(path).ok(), "what was written can be opened");
    const Content written = read(again);
    for (auto file = content.files.begin(); file != content.files.end(); ++file)
        require(written.files.value(file.key()) == file.value(), "what was written reads the same");
    // A stored entry whose length alone was wrong has the right one now.
    for (const QString& name : content.damaged.keys())
        require(written.damaged.contains(name) || written.files.contains(name), "what is damaged is kept");
}

} // namespace

void fuzz(FuzzInput input)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("in.tarn"));
    QFile file(path);
    require(file.open(QIODevice::WriteOnly), "a temporary file can be made");
    file.write(input.rest());
    file.close();
    CPakFile package;
    if (!package.open(path))
        return;
    const Content content = read(package);
    if (content != Content()) // A package without any entry is never written.
        write_and_compare(content, folder.filePath(QStringLiteral("out.tarn")));
}
