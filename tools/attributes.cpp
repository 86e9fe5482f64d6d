// tarn-attributes OUT.md: writes the reference of attributes, from the tables that packages and scripts go by.

#include "animation/animation_scene.h"
#include "core/authored.h"
#include "core/field.h"
#include "gui_core/control_class.h"
#include "gui_core/control_state.h"
#include "gui_core/gui_core.h"
#include "gui_scene/event_manager.h"
#include "gui_scene/translations/translations.h"
#include "script/config_scene.h"
#include "world/world_object.h"
#include "world/world_scene.h"

#include <QFile>

#include <cstdio>
#include <limits>
#include <string_view>

namespace {

using tarn::FieldBase;
using tarn::FieldRules;
using tarn::Value;

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

QString type_name(const Value& value)
{
    return std::visit(Overloaded{[](std::monostate) { return QStringLiteral("none"); },
                                 [](bool) { return QStringLiteral("boolean"); },
                                 [](qint64) { return QStringLiteral("whole number"); },
                                 [](double) { return QStringLiteral("number"); },
                                 [](const QString&) { return QStringLiteral("text"); },
                                 [](const QStringList&) { return QStringLiteral("list of texts"); },
                                 [](const tarn::NumberList&) { return QStringLiteral("list of numbers"); },
                                 [](tarn::ObjectRef) { return QStringLiteral("object"); },
                                 [](const tarn::IdList&) { return QStringLiteral("list of objects"); },
                                 [](const tarn::TextMap&) { return QStringLiteral("texts by name"); },
                                 [](const tarn::NumberMap&) { return QStringLiteral("numbers by name"); }},
                      value);
}

QString number(double value)
{
    return QString::number(value, 'g', 9);
}

QString default_text(const Value& value)
{
    return std::visit(
        Overloaded{
            [](std::monostate) { return QString(); },
            [](bool on) { return on ? QStringLiteral("true") : QStringLiteral("false"); },
            [](qint64 whole) { return QString::number(whole); }, [](double real) { return number(real); },
            [](const QString& text) {
                return text.isEmpty() ? QStringLiteral("empty") : QStringLiteral("`%1`").arg(text);
            },
            [](const tarn::NumberList& list) {
                QStringList parts;
                for (const double part : list)
                    parts.append(number(part));
                return parts.isEmpty() ? QStringLiteral("empty") : parts.join(QStringLiteral(", "));
            },
            [](tarn::ObjectRef) { return QStringLiteral("none"); },
            [](const auto& list) { return list.isEmpty() ? QStringLiteral("empty") : QStringLiteral("filled"); }},
        value);
}

QString range_text(const FieldRules& rules)
{
    const bool from = rules.minimum > std::numeric_limits<double>::lowest();
    const bool to = rules.maximum < std::numeric_limits<double>::max();
    if (from && to)
        return QStringLiteral("%1 to %2").arg(number(rules.minimum), number(rules.maximum));
    if (from || to)
        return from ? QStringLiteral("from %1").arg(number(rules.minimum))
                    : QStringLiteral("to %1").arg(number(rules.maximum));
    return rules.max_length < std::numeric_limits<int>::max() ? QStringLiteral("up to %1 letters").arg(rules.max_length)
                                                              : QString();
}

QString notes(const FieldRules& rules)
{
    QStringList notes;
    if (rules.picture)
        notes.append(QStringLiteral("names a picture"));
    if (rules.function)
        notes.append(QStringLiteral("names a function"));
    if (rules.read_only)
        notes.append(QStringLiteral("read only"));
    if (rules.derived && !rules.children)
        notes.append(QStringLiteral("not saved"));
    return notes.join(QStringLiteral(", "));
}

/// A section with the attributes that `state` has and `base` has not; null `base` for none.
QString section(const QString& title, const tarn::ObjectState& state, const tarn::ObjectState* base)
{
    QString rows;
    for (const FieldBase* field : state.fields()) {
        if (base && base->fields().find(field->name()))
            continue;
        const Value value = field->get(state);
        rows += QStringLiteral("| `%1` | %2 | %3 | %4 | %5 |\n")
                    .arg(QLatin1String(field->name()), type_name(value), range_text(field->rules()),
                         field->rules().children ? QString() : default_text(field->default_value()),
                         notes(field->rules()));
    }
    if (rows.isEmpty())
        rows = QStringLiteral("Nothing of its own.\n");
    else
        rows.prepend(QStringLiteral("| attribute | type | range | default | |\n|---|---|---|---|---|\n"));
    return QStringLiteral("## %1\n\n%2\n").arg(title, rows);
}

QString capitalised(const char16_t* text)
{
    QString name = QString::fromUtf16(text);
    return name.left(1).toUpper() + name.mid(1);
}

/// What all controls have, then for each type what it has beside.
QString controls()
{
    const tarn::ControlState common;
    QString text = section(QStringLiteral("Every control"), common, nullptr);
    for (const tarn::ControlClass& row : tarn::control_classes()) {
        const tarn::StatePtr state(row.make_state());
        text += section(QStringLiteral("%1 (type %2)").arg(capitalised(row.english)).arg(row.type), *state, &common);
    }
    return text;
}

/// What all objects of the world have, then for each kind what it has beside.
QString world_objects(const tarn::ObjectKind& kind)
{
    const tarn::WorldObjectState common;
    QString text = section(QStringLiteral("Every object of the world"), common, nullptr);
    for (const tarn::WorldTypeRow& row : tarn::world_types()) {
        const tarn::StatePtr state(kind.make_state(int(row.type)));
        text += section(QStringLiteral("%1 (kind \"%2\")").arg(capitalised(row.english), QLatin1String(row.kind)),
                        *state, &common);
    }
    return text;
}

/// All types of such objects have the same attributes.
QString objects(const tarn::ObjectKind& kind)
{
    constexpr int most_types = 64;
    for (int type = kind.saves_type ? 0 : -1; type < most_types; ++type)
        if (const tarn::StatePtr state(kind.make_state(type)); state)
            return section(capitalised(kind.english), *state, nullptr);
    return {};
}

QString reference()
{
    tarn::Document document;
    const CConfigScene functions(document);
    const CEventManager events(document);
    const CGuiCore core(document);
    const tarn::WorldScene world(document);
    const CAnimationScene animation(document);
    const tarn::Translations translations(document);
    QString text = QStringLiteral(
        "# Attributes\n\nThe attributes of every kind of object, as packages, scripts of a scene and scripts that use "
        "the "
        "studio name them. This page is written by `tarn-attributes docs/attributes.md` from the tables that the "
        "program itself goes by. Numbers outside their range are held to it, longer texts are cut.\n\n");
    text += section(QStringLiteral("Interface"), tarn::Authored::state(core), nullptr);
    for (const tarn::ObjectKind& kind : document.kinds()) {
        const std::string_view key = kind.key;
        if (!kind.fixed)
            text += key == "controls" ? controls() : key == "objects" ? world_objects(kind) : objects(kind);
    }
    return text.trimmed() + QLatin1Char('\n');
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: tarn-attributes OUT.md\n");
        return 2;
    }
    QFile file(QFile::decodeName(argv[1]));
    const QByteArray bytes = reference().toUtf8();
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush())
        return 0;
    std::fprintf(stderr, "tarn-attributes: %s cannot be written\n", argv[1]);
    return 1;
}
