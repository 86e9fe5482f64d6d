#include "style_file.h"

#include "core/field.h"
#include "core/language.h"
#include "font_library.h"
#include "gui_core/look_parts.h"
#include "gui_core/style_state.h"
#include "store/enough_memory.h"
#include "store/pak_file.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr int style_format = 1;   ///< version of the files' layout; newer ones are refused
constexpr int longest_name = 200; ///< bytes of a file's name without the extension; file systems have room for 255

const QString manifest_name = QStringLiteral("manifest.json");
const QString style_entry = QStringLiteral("style.json");
const QString picture_entry = QStringLiteral("atlas.png");

struct Manifest {
    int format = 0;
    QString kind;
    bool shares_cells = false; ///< the picture is a sheet like the program's, in which parts share pictures
};

QByteArray manifest_text()
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("format");
    writer.value(style_format);
    writer.key("kind");
    writer.value(QStringLiteral("style"));
    writer.key("program");
    writer.value(QStringLiteral("tarn-studio " TARN_VERSION));
    writer.end_object();
    writer.text() += '\n';
    return QByteArray::fromStdString(writer.text());
}

Status read_manifest(QByteArray text, Manifest& manifest)
{
    auto status = JsonText(std::move(text), manifest_name).each_member([&](std::string_view key, JsonCursor& value) {
        if (key == "format")
            return value.read(manifest.format);
        if (key == "kind")
            return value.read(manifest.kind);
        if (key == "shares_cells")
            return value.read(manifest.shares_cells);
        QByteArray ignored;
        return value.read_raw(ignored);
    });
    if (status && (manifest.kind != QLatin1String("style") || manifest.format < 1))
        return Status::error(lang(u"它不是风格文件", u"it is no style file"));
    if (status && manifest.format > style_format)
        return Status::error(lang(u"它由更新版本的程序保存，请升级本程序",
                                  u"it was saved by a newer version of the program. Use that to open it"));
    return status;
}

Status read_members(QByteArray text, StyleState& style)
{
    return JsonText(std::move(text), style_entry).each_member([&](std::string_view key, JsonCursor& value) {
        return read_member(style, key, value);
    });
}

Status read_picture(const QByteArray& png, bool shares_cells, StyleState& style)
{
    auto atlas = Atlas::read(png);
    if (!atlas)
        return atlas.status();
    style.atlas = shares_cells ? Atlas(with_own_cells(atlas.value().picture())) : std::move(atlas.value());
    return {};
}

Status read_entries(const CPakFile& package, StyleState& style)
{
    const auto read = [&](const QString& entry, const auto& use) -> Status {
        const auto content = package.read_file(entry);
        return content ? use(content.value()) : content.status();
    };
    Manifest manifest;
    auto status = read(manifest_name, [&](const QByteArray& text) { return read_manifest(text, manifest); });
    if (status)
        status = read(style_entry, [&](const QByteArray& text) { return read_members(text, style); });
    if (status && package.has_file(picture_entry))
        status = read(picture_entry,
                      [&](const QByteArray& png) { return read_picture(png, manifest.shares_cells, style); });
    return status;
}

/// Those that are damaged or too large are left out: the style can be shown without.
QMap<QString, QByteArray> read_fonts(const CPakFile& package)
{
    QMap<QString, QByteArray> fonts;
    for (const QString& entry : package.names()) {
        if (!is_font_entry(entry) || package.size_of(entry) > FontLibrary::largest_file
            || fonts.size() >= FontLibrary::most_fonts)
            continue;
        if (auto content = package.read_file(entry))
            fonts.insert(entry.mid(font_entry({}).size()), std::move(content.value()));
    }
    return fonts;
}

} // namespace

bool is_file_name(const QString& style)
{
    const auto is_bad = [](QChar c) { return c < QLatin1Char(' ') || QStringLiteral("/\\:*?\"<>|").contains(c); };
    return !style.trimmed().isEmpty() && !style.startsWith(QLatin1Char('.')) && style.toUtf8().size() <= longest_name
        && std::none_of(style.begin(), style.end(), is_bad);
}

QString style_name_of(const QString& path)
{
    return QFileInfo(path).completeBaseName();
}

Status write_style_file(const QString& path, const StyleState& style, const QMap<QString, QByteArray>& fonts)
{
    return with_enough_memory([&]() -> Status {
        CPakFile package;
        if (auto status = package.create(path); !status)
            return status;
        JsonWriter writer;
        writer.begin_object();
        writer.new_line();
        write_members(style, writer);
        writer.new_line();
        writer.end_object();
        writer.text() += '\n';
        auto status = package.add_file(manifest_name, manifest_text());
        if (status)
            status = package.add_file(style_entry, QByteArray::fromStdString(writer.text()));
        if (status && !style.atlas.is_null())
            status = package.add_file(picture_entry, style.atlas.png());
        for (auto font = fonts.begin(); status && font != fonts.end(); ++font)
            status = package.add_file(font_entry(font.key()), font.value());
        return status ? package.close() : status;
    });
}

Result<StyleFile> read_style_file(const QString& path)
{
    return with_enough_memory([&]() -> Result<StyleFile> {
        CPakFile package;
        if (auto opened = package.open(path); !opened)
            return opened;
        StatePtr state(new StyleState);
        auto& style = static_cast<StyleState&>(*state);
        if (auto status = read_entries(package, style); !status)
            return Status::error(
                lang(u"无法载入风格 %1：%2", u"The style %1 cannot be loaded: %2").arg(path, status.message()));
        style.id = 0;
        style.parent = style.base = {};
        style.unknown.clear();
        style.name = style_name_of(path).left(StyleState::max_name);
        return StyleFile{state, read_fonts(package)};
    });
}

} // namespace tarn
