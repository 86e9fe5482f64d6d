// tarn-import [--lang zh|en] IN OUT: reads a model that another program made and writes it in the studio's own layout.
// Tells on the standard output how far it is, a number of 0 to 100 a line; a failure is one line on the standard error
// and status 1, a wrong command line status 2. It is meant to be a child, and limits what it takes by itself.

#include "core/language.h"
#include "model_folder.h"
#include "models/model_file.h"
#include "scene_converter.h"
#include "store/enough_memory.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <assimp/BaseImporter.h>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/importerdesc.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

using namespace tarn;

constexpr float smooth_angle = 55; ///< degrees between faces without normals that are still one surface

void limit_itself()
{
#ifdef Q_OS_UNIX
    const auto limit = [](int what, rlim_t most) {
        const rlimit value{most, most};
        setrlimit(what, &value);
    };
#ifndef __SANITIZE_ADDRESS__ // Which reserves terabytes.
    limit(RLIMIT_AS, rlim_t(1536) << 20);
#endif
    limit(RLIMIT_CPU, 30);
    limit(RLIMIT_FSIZE, rlim_t(ModelLimits::file_size));
    limit(RLIMIT_CORE, 0);
#endif
}

class TellProgress : public Assimp::ProgressHandler {
public:
    bool Update(float share) override
    {
        tell(share * 0.8f);
        return true;
    }
    void tell(float share)
    {
        const int percent = int(share * 100);
        if (percent <= m_told)
            return;
        m_told = percent;
        std::printf("%d\n", percent);
        std::fflush(stdout);
    }

private:
    int m_told = 0;
};

bool is_read(const aiImporterDesc& description)
{
    const QList<QByteArray> known{"gltf", "glb", "obj", "fbx", "dae", "stl"};
    for (const QByteArray& extension : QByteArray(description.mFileExtensions).split(' '))
        if (known.contains(extension))
            return true;
    return false;
}

/// Content decides what a file is read as; of the many layouts only ours are wanted.
void keep_known_layouts(Assimp::Importer& importer)
{
    for (std::size_t i = importer.GetImporterCount(); i > 0; --i) {
        Assimp::BaseImporter* loader = importer.GetImporter(i - 1);
        if (loader && !is_read(*loader->GetInfo()))
            importer.UnregisterLoader(loader);
    }
}

const aiScene* read_scene(Assimp::Importer& importer, ModelFolder& folder)
{
    importer.SetIOHandler(new ModelFolderSystem(folder));
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    importer.SetPropertyInteger(AI_CONFIG_PP_SBBC_MAX_BONES, int(ModelLimits::mesh_bones));
    importer.SetPropertyFloat(AI_CONFIG_PP_GSN_MAX_SMOOTHING_ANGLE, smooth_angle);
    const unsigned steps = aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_FindInvalidData
        | aiProcess_GenSmoothNormals | aiProcess_GenUVCoords | aiProcess_TransformUVCoords | aiProcess_FlipUVs
        | aiProcess_JoinIdenticalVertices | aiProcess_LimitBoneWeights | aiProcess_SplitByBoneCount
        | aiProcess_ImproveCacheLocality | aiProcess_ValidateDataStructure;
    return importer.ReadFile(folder.main_name().toUtf8().constData(), steps);
}

Status write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) != content.size()
        || !file.flush())
        return Status::error(file.errorString());
    return {};
}

/// `reason` is the reading library's, in its own words.
Status damaged(const char* reason)
{
    const QString said = QString::fromUtf8(reason).simplified().left(200);
    const QString text = lang(u"文件已损坏，或者内容与扩展名不符",
                              u"it is damaged, or not what its name's ending says");
    return Status::error(said.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, said));
}

Status import_model(const QString& in, const QString& out)
{
    ModelFolder folder(in);
    if (folder.read(folder.main_name()).isNull())
        return Status::error(lang(u"无法读取该文件", u"the file cannot be read"));
    Assimp::Importer importer;
    keep_known_layouts(importer);
    TellProgress progress;
    importer.SetProgressHandler(&progress);
    const aiScene* scene = read_scene(importer, folder);
    importer.SetProgressHandler(nullptr);
    if (!scene)
        return damaged(importer.GetErrorString());
    const QString extension = QFileInfo(in).suffix().toLower();
    auto data = convert_scene(*scene, folder, extension.startsWith(QLatin1String("gl")));
    if (!data)
        return data.status();
    importer.FreeScene();
    progress.tell(0.9f);
    if (auto status = check_model(data.value()); !status)
        return status;
    const QByteArray file = write_model(data.value());
    if (file.size() > ModelLimits::file_size)
        return Status::error(lang(u"模型过大", u"the model is too large"));
    return write(out, file);
}

Status import_within_memory(const QString& in, const QString& out)
{
    try {
        return with_enough_memory([&] { return import_model(in, out); });
    } catch (const std::exception& problem) { // The library's.
        return damaged(problem.what());
    }
}

} // namespace

int main(int argc, char** argv)
{
    limit_itself();
    const QCoreApplication app(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    VLCMsgIniW::set_language(Language::English);
    if (arguments.size() == 4 && arguments[0] == QLatin1String("--lang")) {
        if (arguments[1] == QLatin1String("zh"))
            VLCMsgIniW::set_language(Language::Chinese);
        arguments.remove(0, 2);
    }
    if (arguments.size() != 2) {
        std::fprintf(stderr, "usage: tarn-import [--lang zh|en] IN OUT\n");
        return 2;
    }
    const Status status = import_within_memory(arguments[0], arguments[1]);
    if (!status)
        std::fprintf(stderr, "%s\n", status.message().toUtf8().constData());
    return status ? 0 : 1;
}
