#include "clipboard_files.h"

#include "core/json_reader.h"
#include "core/json_writer.h"
#include "core/language.h"
#include "gui_core/dxut_media.h"
#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"
#include "gui_scene/font_library.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/picture_names.h"
#include "store/pak_rules.h"
#include "world_clipboard.h"

#include <QHash>

#include <algorithm>

namespace tarn {

namespace {

/// Fonts that none of the states is written in stay out.
void take_fonts(CGuiPlugScene& scene, const std::vector<StatePtr>& states, const ClipboardFiles& files)
{
    QStringList families;
    for (const StatePtr& state : states)
        families += font_families_of(*state);
    families.removeIf([&](const QString& family) { return scene.fonts().find(family); });
    if (families.isEmpty())
        return;
    for (auto file = files.lowerBound(font_entry({})); file != files.end() && is_font_entry(file.key()); ++file) {
        const auto taken = scene.fonts().take(file.key().mid(font_entry({}).size()), file.value());
        const FontLibrary::Font* font = taken ? scene.fonts().find(taken.value()) : nullptr;
        const auto is_wanted = [&](const QString& family) { return families.contains(family, Qt::CaseInsensitive); };
        if (font && std::ranges::none_of(font->families, is_wanted))
            scene.fonts().remove(QString(font->entry));
    }
}

} // namespace

void add_files_of(const CGuiPlugScene& scene, const ObjectState& state, ClipboardFiles& files)
{
    const auto& present = scene.document().files();
    for (const QString& entry : file_entries(state))
        if (const auto file = present.find(entry); file != present.end())
            files.insert(entry, *file);
    for (const QString& family : font_families_of(state))
        if (const FontLibrary::Font* font = scene.fonts().find(family))
            files.insert(font->entry, font->content);
}

void write_files(JsonWriter& writer, const ClipboardFiles& files)
{
    writer.key("pictures");
    writer.begin_object();
    for (auto file = files.begin(); file != files.end(); ++file) {
        writer.new_line();
        const QByteArray quoted = '"' + file.value().toBase64() + '"';
        writer.raw_member(file.key(), {quoted.constData(), std::size_t(quoted.size())});
    }
    writer.end_object();
}

Status read_file(const QString& entry, JsonCursor& value, ClipboardFiles& files)
{
    const bool may_be = entry.startsWith(texture_entry({})) || entry.startsWith(CDXUTFlash::movie_entry({}))
        || is_font_entry(entry) || is_model_entry(entry);
    if (!may_be || !check_entry_name(entry))
        return value.fail(
            lang(u"\"%1\" 不是图片、影片、字体或模型的名称", u"\"%1\" is no name of a picture, movie, font or model")
                .arg(entry));
    if (files.contains(entry))
        return value.fail(lang(u"\"%1\" 出现了两次", u"\"%1\" appears twice").arg(entry));
    QString text;
    if (auto status = value.read(text); !status)
        return status;
    const auto decoded = QByteArray::fromBase64Encoding(text.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return value.fail(lang(u"文件 \"%1\" 已损坏", u"the file \"%1\" is damaged").arg(entry));
    files.insert(entry, decoded.decoded);
    return {};
}

void take_files(CGuiPlugScene& scene, std::vector<StatePtr>& states, const ClipboardFiles& files)
{
    CGuiCore& core = scene.gui_core();
    ClipboardFiles used;
    for (const StatePtr& state : states)
        for (const QString& entry : file_entries(*state))
            if (const auto file = files.find(entry); file != files.end())
                used.insert(entry, *file);
    QHash<QString, QString> renamed;
    const auto added = new_files(used, core, renamed);
    for (StatePtr& state : states)
        follow_renamed(*state, renamed);
    if (!added.isEmpty()) {
        core.document().edit_files([&](auto& held) { held.insert(added); });
        core.add_damage(QRectF(QPointF(), core.screen_size())); // Others may have named a picture that was missing.
    }
    take_fonts(scene, states, files);
}

} // namespace tarn
