// The entry points of the fuzzer, and without it a program that gives every file of the folders named to its target.

#include "fuzz.h"

#include "core/language.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto* const app = new QGuiApplication(*argc, *argv); // Its end, among those of statics, has no order.
    Q_UNUSED(app)
    VLCMsgIniW::set_language(tarn::Language::English);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz(FuzzInput(data, size));
    return 0;
}

#ifndef TARN_FUZZ
int main(int argc, char** argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QFile::decodeName(argv[i]));
        for (const QFileInfo& info : folder.entryInfoList(QDir::Files)) {
            QFile file(info.filePath());
            require(file.open(QIODevice::ReadOnly), "a file of the corpus can be read");
            const QByteArray content = file.readAll();
            std::fprintf(stderr, "%s\n", qPrintable(info.filePath())); // The last one named is the one that ends it.
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.constData()),
                                   std::size_t(content.size()));
            ++count;
        }
    }
    std::printf("%d files\n", count);
    return count > 0 ? 0 : 1;
}
#endif
