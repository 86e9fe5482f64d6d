#include "package_reader.h"

#include "core/json_reader.h"
#include "core/language.h"
#include "core/utf8.h"
#include "gui_core/dxut_radio_button.h"
#include "gui_core/style_state.h"
#include "gui_core/texture_name.h"
#include "package_writer.h"
#include "picture_names.h"
#include "store/enough_memory.h"
#include "store/in_worker.h"
#include "store/pak_file.h"
#include "store/pak_rules.h"
#include "store/scene_text.h"
#include "tex_path_info.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

const QString manifest_name = QStringLiteral("manifest.json");

bool is_part(const Document& document, const QString& entry)
{
    const auto& parts = document.parts();
    return std::any_of(parts.begin(), parts.end(),
                       [&](const PackagePart& part) { return entry == QLatin1String(part.entry); });
}

/// Pictures that are named but not in the package may lie beside it.
void add_loose_pictures(const SceneSnapshot& scene, QMap<QString, QByteArray>& files)
{
    QSet<QString> looked_for;
    quint64 total = 0;
    each_picture(scene, [&](const QString& name) {
        if (files.contains(texture_entry(name)) || looked_for.contains(name))
            return;
        looked_for.insert(name);
        const QByteArray loose = CTexPathInfo::find_loose(name);
        total += quint64(loose.size());
        if (!loose.isEmpty() && total <= PakLimits::max_total_size)
            files.insert(texture_entry(name), loose);
    });
}

/// The styles' atlases are files of the package. One that cannot be used stays among these: the style then has the look
/// that it is based on.
void take_atlases(SceneSnapshot& scene, const CGuiCore& core, QMap<QString, QByteArray>& files)
{
    auto& interface = static_cast<CoreState&>(*scene.containers[core.document().part_of(core)]);
    bool is_known = false;
    for (const StatePtr& state : scene.objects[core.style_kind().place]) {
        auto& style = static_cast<StyleState&>(*state);
        is_known = is_known || interface.scene_style.id == style.id;
        const auto file = files.constFind(atlas_entry(style.id));
        if (file == files.cend())
            continue;
        if (auto atlas = Atlas::read(*file)) {
            style.atlas = std::move(atlas.value());
            files.erase(file);
        }
    }
    if (!is_known)
        interface.scene_style = {};
}

Status read_manifest(QByteArray text, quint32& next_id)
{
    int format = 0;
    bool told = false;
    JsonText json(std::move(text), manifest_name);
    auto status = json.each_member([&](std::string_view key, JsonCursor& value) {
        if (key == "format")
            return std::exchange(told, true) ? value.fail(lang(u"\"format\" 出现了两次", u"\"format\" appears twice"))
                                             : value.read(format);
        if (key == "next_id")
            return value.read(next_id);
        QByteArray ignored;
        return value.read_raw(ignored);
    });
    if (!status)
        return status;
    if (format > package_format)
        return Status::error(lang(u"它由更新版本的程序保存（格式 %1，本程序支持到 %2），请升级本程序",
                                  u"it was saved by a newer version of the program (format %1; this one reads up to "
                                  u"%2). Use the newer version to open it")
                                 .arg(format)
                                 .arg(package_format));
    if (format < 1)
        return Status::error(lang(u"%1 中缺少格式版本", u"%1 does not tell the format's version").arg(manifest_name));
    return {};
}

} // namespace

Result<SceneSnapshot> read_content(QByteArray manifest, QMap<QString, QByteArray> texts,
                                   QMap<QString, QByteArray> files, CGuiCore& core, const Progress& progress)
{
    quint32 next_id = 0;
    if (auto status = read_manifest(std::move(manifest), next_id); !status)
        return status;
    const Document& document = core.document();
    SceneReader reader(document);
    for (const PackagePart& part : document.parts()) {
        QByteArray text = texts.take(QLatin1String(part.entry));
        if (text.isEmpty() && !part.required)
            continue;
        if (auto status = reader.read(part, std::move(text), progress_of(document, part, progress)); !status)
            return status;
    }
    if (auto status = reader.finish(next_id); !status)
        return status;
    SceneSnapshot content = std::move(reader.scene());
    for (const StatePtr& root : content.objects[core.root_kind().place]) {
        auto& s = static_cast<DialogState&>(*root);
        s.caption_shown = s.frame_shown = false;
    }
    keep_one_checked(content.objects[core.control_kind().place]);
    take_atlases(content, core, files);
    add_loose_pictures(content, files);
    content.files = std::move(files);
    return content;
}

namespace {

/// The package's entries beside the scene's own.
struct OtherEntries {
    QMap<QString, QByteArray> files;
    QMap<QString, QByteArray> damaged;
};

/// What is unpacked of a package.
struct Unpacked {
    QByteArray manifest;
    QMap<QString, QByteArray> texts; ///< of the parts, by their entries
    OtherEntries others;
};

/// Unpacks entries one by one and tells how much of the whole package is done.
class Unpacker {
public:
    Unpacker(const CPakFile& package, const Progress& progress) : m_package(package), m_progress(progress)
    {
        for (const QString& name : package.names())
            m_all += package.size_of(name);
        m_all = std::max<qint64>(m_all, 1);
    }
    Result<QByteArray> read(const QString& name)
    {
        const auto share = [this](qint64 bytes) { return double(bytes) / double(m_all); };
        const qint64 from = std::exchange(m_done, m_done + m_package.size_of(name));
        return m_package.read_file(name, m_progress.part(share(from), share(m_done)));
    }
    const CPakFile& package() const { return m_package; }

private:
    const CPakFile& m_package;
    const Progress& m_progress;
    qint64 m_all = 0;
    qint64 m_done = 0;
};

Result<OtherEntries> read_others(Unpacker& unpacker, const Document& document)
{
    OtherEntries others;
    const CPakFile& package = unpacker.package();
    for (const QString& name : package.names()) {
        if (name == manifest_name || is_part(document, name) || name.endsWith(QLatin1Char('/')))
            continue;
        auto content = unpacker.read(name);
        if (!content && is_stopped(content.status()))
            return content.status();
        if (content) {
            others.files.insert(name, std::move(content.value()));
            continue;
        }
        const auto packed = package.read_packed(name);
        if (package.is_memory_short())
            return content.status(); // The entry would be lost with the next save.
        others.damaged.insert(name, packed ? packed.value() : QByteArray());
    }
    return others;
}

Result<Unpacked> unpack(const CPakFile& package, const Document& document, const Progress& progress)
{
    Unpacked unpacked;
    Unpacker unpacker(package, progress);
    auto manifest = unpacker.read(manifest_name);
    if (!manifest)
        return manifest.status();
    unpacked.manifest = std::move(manifest.value());
    for (const PackagePart& part : document.parts()) {
        if (!part.required && !package.has_file(QLatin1String(part.entry)))
            continue;
        auto text = unpacker.read(QLatin1String(part.entry));
        if (!text)
            return text.status();
        unpacked.texts.insert(QLatin1String(part.entry), std::move(text.value()));
    }
    auto others = read_others(unpacker, document);
    if (!others)
        return others.status();
    unpacked.others = std::move(others.value());
    return unpacked;
}

Result<SceneSnapshot> read_entries(const CPakFile& package, CGuiCore& core, const Progress& progress)
{
    auto unpacked = in_worker(progress.part(0, 0.4), [&](const Progress& part) {
        return with_enough_memory([&] { return unpack(package, core.document(), part); });
    });
    if (!unpacked)
        return unpacked.status();
    // States come from the pool of this thread.
    auto content = read_content(std::move(unpacked.value().manifest), std::move(unpacked.value().texts),
                                std::move(unpacked.value().others.files), core, progress.part(0.4, 1));
    if (content) {
        content.value().damaged = std::move(unpacked.value().others.damaged);
        return content;
    }
    if (is_stopped(content.status()))
        return content;
    return Status::error(lang(u"无法载入文件包 %1：%2", u"The package %1 cannot be loaded: %2")
                             .arg(package.path(), content.status().message()));
}

} // namespace

Result<SceneSnapshot> read_package(const CPakFile& package, CGuiCore& core, const Progress& progress)
{
    return with_enough_memory([&] { return read_entries(package, core, progress); });
}

} // namespace tarn
