// tarn-pack SOURCE OUT.tarn [FOLDER | MODEL]...: packs a folder of readable sources (manifest.json, the texts of the parts,
// functions/ with a file each, textures/) into a package, with the pictures of further folders and with models, which are
// files of one piece. The scene is read and written as the program does it, so the package holds the canonical text.

#include "engine/base_world.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/package_reader.h"
#include "gui_scene/package_writer.h"
#include "gui_scene/save_opt.h"
#include "script/config_scene.h"
#include "store/pak_file.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>

#include <cstdio>

namespace {

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void add_pictures(const QString& folder, QMap<QString, QByteArray>& files)
{
    const QDir dir(folder);
    QDirIterator all(folder, {QStringLiteral("*.png"), QStringLiteral("*.jpg")}, QDir::Files,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = all.next();
        files.insert(QStringLiteral("textures/") + dir.relativeFilePath(path), read(path));
    }
}

void add_model(const QFileInfo& model, QMap<QString, QByteArray>& files)
{
    files.insert(QStringLiteral("models/%1/%2").arg(model.completeBaseName(), model.fileName()),
                 read(model.filePath()));
}

/// Each file is a function of its name.
tarn::Status add_functions(const QString& folder, CConfigScene& functions)
{
    const QFileInfoList files = QDir(folder).entryInfoList({QStringLiteral("*.lua")}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        const QString text = QString::fromUtf8(read(file.filePath()));
        if (auto status = functions.set_function(file.completeBaseName(), text); !status)
            return status;
    }
    return {};
}

tarn::Status pack(const QStringList& arguments)
{
    const QString source = arguments.at(1);
    QMap<QString, QByteArray> files;
    add_pictures(source + QStringLiteral("/textures"), files);
    for (const QString& more : arguments.mid(3))
        QFileInfo(more).isDir() ? add_pictures(more, files) : add_model(QFileInfo(more), files);

    CBaseWorld world;
    CGuiPlugScene scene;
    tarn::Document& document = world.document();
    scene.join(document);
    CGuiCore& core = scene.gui_core();
    QMap<QString, QByteArray> texts;
    for (const tarn::PackagePart& part : document.parts())
        texts.insert(QLatin1String(part.entry), read(source + QLatin1Char('/') + QLatin1String(part.entry)));
    auto content = tarn::read_content(read(source + QStringLiteral("/manifest.json")), texts, files, core);
    if (!content)
        return content.status();
    document.install(std::move(content.value()));
    if (auto status = add_functions(source + QStringLiteral("/functions"), world.config_scene()); !status)
        return status;
    CPakFile package;
    auto status = package.create(arguments.at(2));
    if (status)
        status = tarn::write_package(package, document, tarn::content_to_save(core), {});
    return status ? package.close() : status;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: tarn-pack SOURCE OUT.tarn [FOLDER | MODEL]...\n");
        return 2;
    }
    const tarn::Status status = pack(arguments);
    if (!status)
        std::fprintf(stderr, "tarn-pack: %s\n", qPrintable(status.message()));
    return status ? 0 : 1;
}
