#include "diff_words.h"

#include "core/json_writer.h"
#include "core/language.h"

#include <QSet>

#include <algorithm>
#include <map>

namespace tarn {

namespace {

using What = ObjectChange::What;

constexpr qsizetype longest_value = 40; ///< UTF-16 units that are quoted

QString quoted(const QString& json)
{
    return json.size() <= longest_value ? json : json.left(longest_value) + QStringLiteral("…");
}

QString verb_of(What what)
{
    switch (what) {
    case What::Added: return lang(u"已添加", u"added");
    case What::Removed: return lang(u"已删除", u"removed");
    default: return lang(u"已更改", u"changed");
    }
}

bool is_one_of(const QString& field, std::initializer_list<const char*> names)
{
    return std::any_of(names.begin(), names.end(), [&](const char* name) { return field == QLatin1String(name); });
}

/// What happened to the attribute, without the values.
QString deed_of(const QString& field)
{
    if (is_one_of(field, {"x", "y"}))
        return lang(u"已移动", u"moved");
    if (is_one_of(field, {"width", "height"}))
        return lang(u"尺寸已更改", u"resized");
    return lang(u"%1 已更改", u"%1 changed").arg(field);
}

/// " (before → after)", where there is room for it.
QString values_of(const FieldChange& field, const ObjectChange& change)
{
    const bool is_plain = !is_one_of(field.field, {"x", "y", "width", "height", "text"}) && field.part.isEmpty()
        && change.reordered.empty();
    return is_plain && !field.before.isNull() && !field.after.isNull()
        ? QStringLiteral(" (%1 → %2)").arg(quoted(field.before), quoted(field.after))
        : QString();
}

QString words_of_keys(const KeyChanges& keys)
{
    QStringList words;
    if (keys.moved > 0) {
        const QString by = QString::number(double(qAbs(keys.offset)), 'g', 4);
        words << (keys.offset > 0 ? lang(u"%1 个关键帧推后 %2 秒", u"%1 keys %2 s later")
                                  : lang(u"%1 个关键帧提前 %2 秒", u"%1 keys %2 s earlier"))
                     .arg(keys.moved)
                     .arg(by);
    }
    if (keys.added > 0)
        words << lang(u"添加 %1 个关键帧", u"%1 keys added").arg(keys.added);
    if (keys.removed > 0)
        words << lang(u"删除 %1 个关键帧", u"%1 keys removed").arg(keys.removed);
    if (keys.changed > 0)
        words << lang(u"更改 %1 个关键帧", u"%1 keys changed").arg(keys.changed);
    return words.join(lang(u"，", u", "));
}

/// The line of one owner.
class Line {
public:
    void add(const ObjectChange& change, bool is_owner)
    {
        if (is_owner)
            add_own(change);
        else
            add_part(change);
    }
    QString text() const
    {
        QStringList words = m_own;
        for (const auto& [deed, doers] : m_parts)
            words << (doers.names.size() == 1
                          ? QStringLiteral("%1 %2%3").arg(doers.names.first(), deed.second, doers.values)
                          : lang(u"%1 个%2%3", u"%1 %2s %3").arg(doers.names.size()).arg(deed.first, deed.second));
        if (const QString keys = words_of_keys(m_keys); !keys.isEmpty())
            words << keys;
        return words.join(lang(u"，", u", "));
    }

private:
    /// Each deed once, and the values where there is room for them.
    void add_own(const ObjectChange& change)
    {
        if (change.what != What::Changed)
            return m_own.append(verb_of(change.what));
        for (const FieldChange& field : change.fields) {
            const QString deed = deed_of(field.field) + values_of(field, change);
            if (!m_own.contains(deed))
                m_own.append(deed);
        }
    }
    void add_part(const ObjectChange& change)
    {
        const QString kind = lang(change.kind->chinese, change.kind->english);
        const QString name = change.name.isEmpty() ? QStringLiteral("%1 %2").arg(kind).arg(change.id) : change.name;
        const auto note = [&](const QString& deed, const QString& values = {}) {
            Doers& doers = m_parts[{kind, deed}];
            if (!doers.names.contains(name) || doers.names.last() != name)
                doers.names.append(name);
            doers.values = values;
        };
        if (change.what != What::Changed)
            return note(verb_of(change.what));
        if (change.has_other_parent)
            note(lang(u"移到此处", u"moved here"));
        for (const FieldChange& field : change.fields)
            if (field.field != QLatin1String("parent") && field.field != QLatin1String("keys"))
                note(deed_of(field.field), values_of(field, change));
        add_keys(change.keys);
    }
    void add_keys(const KeyChanges& keys)
    {
        const bool same_way = m_keys.moved == 0 || qAbs(m_keys.offset - keys.offset) < 1e-3f;
        if (keys.moved > 0 && same_way) {
            m_keys.moved += keys.moved;
            m_keys.offset = keys.offset;
        } else {
            m_keys.changed += keys.moved;
        }
        m_keys.added += keys.added;
        m_keys.removed += keys.removed;
        m_keys.changed += keys.changed;
    }

    struct Doers {
        QStringList names;
        QString values; ///< of the last of them
    };
    QStringList m_own;
    std::map<std::pair<QString, QString>, Doers> m_parts; ///< by kind and deed
    KeyChanges m_keys;
};

const char* name_of(What what)
{
    return what == What::Added ? "added" : what == What::Removed ? "removed" : "changed";
}

void write_json(JsonWriter& writer, const char* name, const QString& json)
{
    writer.key(name);
    writer.raw(json.isNull() ? "null" : json.toStdString());
}

void write_object(JsonWriter& writer, const ObjectChange& change)
{
    writer.new_line();
    writer.begin_object();
    writer.key("kind");
    writer.value(change.kind ? QString::fromLatin1(change.kind->key) : QStringLiteral("scene"));
    writer.key("id");
    writer.value(change.id);
    writer.key("name");
    writer.value(change.name);
    writer.key("change");
    writer.value(QString::fromLatin1(name_of(change.what)));
    writer.key("fields");
    writer.begin_array();
    for (const FieldChange& field : change.fields) {
        writer.begin_object();
        if (!field.field.isEmpty()) {
            writer.key("field");
            writer.value(field.field);
        }
        if (!field.part.isEmpty()) {
            writer.key("part");
            writer.value(field.part);
        }
        write_json(writer, "before", field.before);
        write_json(writer, "after", field.after);
        writer.end_object();
    }
    writer.end_array();
    writer.end_object();
}

} // namespace

QString words_of(const SceneChanges& changes)
{
    std::vector<quint32> owners; // In the order in which they come.
    QHash<quint32, QString> titles;
    QHash<quint32, Line> lines;
    QSet<quint32> gone_or_new; // What is in them is not worth a word.
    for (const ObjectChange& change : changes.objects) {
        if (!titles.contains(change.owner)) {
            owners.push_back(change.owner);
            const ObjectKind* kind = changes.kinds.value(change.owner);
            titles.insert(change.owner,
                          kind ? QStringLiteral("%1 %2").arg(lang(kind->chinese, kind->english),
                                                             changes.names.value(change.owner))
                               : lang(u"界面", u"interface"));
        }
        if (change.id == change.owner && change.what != What::Changed)
            gone_or_new.insert(change.id);
        if (change.id == change.owner || !gone_or_new.contains(change.owner))
            lines[change.owner].add(change, change.id == change.owner);
    }
    QString text;
    for (const quint32 owner : owners)
        text += QStringLiteral("%1: %2\n").arg(titles.value(owner).trimmed(), lines[owner].text());
    for (const FileChange& file : changes.files)
        text += QStringLiteral("%1: %2\n").arg(file.name, verb_of(file.what));
    return text;
}

QString json_of(const SceneChanges& changes)
{
    JsonWriter writer;
    writer.begin_object();
    writer.new_line();
    writer.key("objects");
    writer.begin_array();
    for (const ObjectChange& change : changes.objects)
        write_object(writer, change);
    writer.new_line();
    writer.end_array();
    writer.new_line();
    writer.key("files");
    writer.begin_array();
    for (const FileChange& file : changes.files) {
        writer.new_line();
        writer.begin_object();
        writer.key("name");
        writer.value(file.name);
        writer.key("change");
        writer.value(QString::fromLatin1(name_of(file.what)));
        writer.end_object();
    }
    writer.new_line();
    writer.end_array();
    writer.new_line();
    writer.end_object();
    writer.text() += '\n';
    return QString::fromStdString(writer.text());
}

} // namespace tarn
