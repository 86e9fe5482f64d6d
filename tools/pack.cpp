// tarn-pack SOURCE OUT.tarn [PICTURES]: packs a folder of readable sources (manifest.json, the texts of the parts, functions/ with a file each, textures/) into a
// package; PICTURES is a further folder of pictures. The scene is read and written as the program does it, so the
// package holds the canonical text.

#include "animation/animation_scene.h"
#include "gui_scene/event_manager.h"
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
    if (arguments.size() > 3)
        add_pictures(arguments.at(3), files);

    tarn::Document document;
    CConfigScene functions(document);
    CGuiCore core(document);
    CEventManager events(document); // As the scene's plug-in does: their order is that of the package's entries.
    CAnimationScene animation(document);
    QMap<QString, QByteArray> texts;
    for (const tarn::PackagePart& part : document.parts())
        texts.insert(QLatin1String(part.entry), read(source + QLatin1Char('/') + QLatin1String(part.entry)));
    auto content = tarn::read_content(read(source + QStringLiteral("/manifest.json")), texts, files, core);
    if (!content)
        return content.status();
    document.install(std::move(content.value()));
    if (auto status = add_functions(source + QStringLiteral("/functions"), functions); !status)
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
        std::fprintf(stderr, "usage: tarn-pack SOURCE OUT.tarn [PICTURES]\n");
        return 2;
    }
    const tarn::Status status = pack(arguments);
    if (!status)
        std::fprintf(stderr, "tarn-pack: %s\n", qPrintable(status.message()));
    return status ? 0 : 1;
}
