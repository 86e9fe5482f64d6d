// tarn-models FOLDER: writes the sample models into a folder.

#include "models.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::fprintf(stderr, "usage: tarn-models FOLDER\n");
        return 2;
    }
    const std::pair<const char*, QByteArray (*)()> models[] = {
        {"figure", make_figure}, {"chest", make_chest}, {"tree", make_tree}, {"crate", make_crate}};
    for (const auto& [name, make] : models) {
        const QByteArray content = make();
        QFile file(arguments[1] + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".glb"));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush()) {
            std::fprintf(stderr, "tarn-models: %s: %s\n", qPrintable(file.fileName()), qPrintable(file.errorString()));
            return 1;
        }
    }
    return 0;
}
