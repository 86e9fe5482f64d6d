#include "caption_edit.h"
#include "core/authored.h"
#include "core/edit_limit.h"

#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/interface_font.h"
#include "gui_scene/gui_plug_scene.h"
#include "selection_edit.h"

#include <algorithm>
#include <memory>

namespace tarn {

namespace {

constexpr int least_font = 9; ///< pixels; smaller texts are edited in this size

/// Stores a new text; the object may be gone by then.
std::function<void(const QString&)> writer(CGuiPlugScene& scene, ModelObject& object, const FieldBase& field)
{
    return [&scene, &field, weak = object.weak_from_this()](const QString& text) {
        const auto target = weak.lock();
        if (!scene.gui_core().selection().editing || !target || !target->is_attached()
            || std::get<QString>(field.get(Authored::state(*target))) == text)
            return;
        {
            const UserAction action(scene.journal(), lang(u"修改文字", u"Edit Text"));
            (void)target->set_property(field, Value(text)); // A text fits into a field of text.
        }
        notify_properties(scene);
    };
}

template <class T>
T value_of(const ModelObject& object, FieldKey key, T missing)
{
    const FieldBase* field = object.fields().find(key);
    const Value value = field ? field->get(Authored::state(object)) : Value();
    const T* found = std::get_if<T>(&value);
    return found ? *found : missing;
}

Qt::Alignment alignment_of(const ModelObject& object)
{
    static constexpr Qt::Alignment horizontal[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    return horizontal[std::clamp<qint64>(value_of<qint64>(object, key<&StaticState::horizontal_align>, 0), 0, 2)]
        | Qt::AlignVCenter;
}

QFont font_of(qint64 size, double scale, bool bold)
{
    return interface_font(std::max(least_font, qRound(double(size > 0 ? size : default_font_size) * scale)), bold);
}

std::optional<EditableText> text_of(CGuiPlugScene& scene, CDXUTControl& control)
{
    const FieldBase* field = control.fields().find(key<&StaticState::text>);
    if (!field)
        return {};
    const QString text = value_of(control, key<&StaticState::text>, QString());
    return EditableText{.text = text,
                        .place = control.screen_rect(),
                        .font = font_of(value_of<qint64>(control, key<&StaticState::font_size>, 0),
                                        control.dialog()->scale_y(), value_of(control, key<&StaticState::bold>, false)),
                        .alignment = alignment_of(control),
                        .multi_line = value_of(control, key<&StaticState::word_wrap>, false)
                            || text.contains(QLatin1Char('\n')),
                        .commit = writer(scene, control, *field)};
}

EditableText caption_of(CGuiPlugScene& scene, CDXUTDialog& dialog)
{
    return {.text = dialog.caption(),
            .place = dialog.caption_rect(),
            .font = font_of(0, 1, false),
            .alignment = Qt::AlignLeft | Qt::AlignVCenter,
            .commit = writer(scene, dialog, *dialog.fields().find(key<&DialogState::caption>))};
}

} // namespace

std::optional<EditableText> editable_text_at(CGuiPlugScene& scene, QPointF place)
{
    if (!scene.gui_core().selection().editing || scene.mouse_function() != 0)
        return {};
    const auto targets = targets_at(scene.gui_core(), place);
    if (targets.empty())
        return {};
    const Target& target = targets.front();
    std::optional<EditableText> text;
    if (target.control)
        text = text_of(scene, *target.control);
    else if (target.dialog->caption_rect().contains(place))
        text = caption_of(scene, *target.dialog);
    if (text)
        select(scene, target, false);
    return text && can_be_edited(text->text) ? text : std::nullopt;
}

} // namespace tarn
