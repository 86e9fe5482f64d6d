#include "scene_text.h"

#include "core/field.h"
#include "core/json_reader.h"
#include "core/json_writer.h"
#include "core/language.h"
#include "core/model_object.h"
#include "core/utf8.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr quint32 lowest_highest = 1; ///< the root dialog's id, which is never issued

std::string_view view(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// Asks the progress for every so many objects.
class Counter {
public:
    Counter(const Progress& progress, qsizetype all) : m_progress(progress), m_all(std::max<qsizetype>(all, 1)) {}
    bool next()
    {
        constexpr qsizetype often = 64;
        return ++m_done % often != 0 || m_progress.go_on(std::min(1.0, double(m_done) / double(m_all)));
    }

private:
    const Progress& m_progress;
    qsizetype m_all;
    qsizetype m_done = 0;
};

bool write_list(JsonWriter& writer, const ObjectKind& kind, const std::vector<StatePtr>& states, Counter& counter)
{
    writer.new_line();
    writer.key(kind.key);
    if (kind.fixed) {
        write_state(*states.front(), writer);
        return true;
    }
    writer.begin_array();
    for (const StatePtr& state : states) {
        writer.new_line();
        write_state(*state, writer);
        if (!counter.next())
            return false;
    }
    writer.new_line();
    writer.end_array();
    return true;
}

Status twice(std::string_view key, const JsonCursor& place)
{
    return place.fail(lang(u"\"%1\" 出现了两次", u"\"%1\" appears twice").arg(from_utf8(key)));
}

QString described(const ObjectKind& kind, const ObjectState& state)
{
    const FieldBase* name = state.fields().find("name");
    const Value value = name ? name->get(state) : Value();
    const auto* text = std::get_if<QString>(&value);
    return QStringLiteral("%1 %2 (\"%3\")")
        .arg(lang(kind.chinese, kind.english))
        .arg(state.id)
        .arg(text ? *text : QString());
}

} // namespace

QByteArray part_text(const Document& document, const PackagePart& part, const SceneSnapshot& scene,
                     const Progress& progress)
{
    const ObjectState& container = *scene.containers[document.part_of(*part.container)];
    std::size_t count = 0;
    for (const ObjectKind& kind : document.kinds())
        if (std::string_view(kind.part) == part.entry)
            count += scene.objects[kind.place].size();
    Counter counter(progress, qsizetype(count));
    JsonWriter writer;
    writer.begin_object();
    writer.new_line();
    write_members(container, writer);
    for (std::size_t k = 0; k < document.kinds().size(); ++k)
        if (std::string_view(document.kinds()[k].part) == part.entry && !scene.objects[k].empty()
            && !write_list(writer, document.kinds()[k], scene.objects[k], counter))
            return {};
    for (const auto& [name, json] : container.unknown) {
        writer.new_line();
        writer.raw_member(name, view(json));
    }
    writer.new_line();
    writer.end_object();
    writer.text() += '\n';
    return QByteArray::fromStdString(writer.text());
}

Progress progress_of(const Document& document, const PackagePart& part, const Progress& whole)
{
    const auto place = double(document.part_of(*part.container));
    const auto count = double(document.parts().size());
    return whole.part(place / count, (place + 1) / count);
}

bool is_empty(const Document& document, const PackagePart& part, const SceneSnapshot& scene)
{
    const ObjectState& container = *scene.containers[document.part_of(*part.container)];
    const auto has_own = [&](const FieldBase* field) {
        return !field->rules().derived && !field->is_default(container);
    };
    const auto is_filled = [&](const ObjectKind& kind) {
        return std::string_view(kind.part) == part.entry && !scene.objects[kind.place].empty();
    };
    return container.unknown.isEmpty() && std::none_of(container.fields().begin(), container.fields().end(), has_own)
        && std::none_of(document.kinds().begin(), document.kinds().end(), is_filled);
}

SceneReader::SceneReader(const Document& document) : m_document(document), m_highest(lowest_highest)
{
    for (const PackagePart& part : document.parts())
        m_scene.containers.emplace_back(part.container->fresh_state());
    m_scene.objects.resize(document.kinds().size());
    m_keys.resize(document.kinds().size());
}

Status SceneReader::claim_id(std::size_t kind, const ObjectState& state, const JsonCursor& place)
{
    if (state.id == 0 || state.id > Document::max_id)
        return place.fail(lang(u"缺少有效的 \"id\"", u"a valid \"id\" is missing"));
    const auto& kinds = m_document.kinds();
    const bool is_taken = m_by_id.contains(state.id)
        || std::any_of(kinds.begin(), kinds.end(), [&](const ObjectKind& other) {
                              return other.fixed && other.place != kind && other.fixed->id() == state.id;
                          });
    if (is_taken)
        return place.fail(lang(u"编号 %1 出现了两次", u"the id %1 appears twice").arg(state.id));
    if (auto status = claim_key(kind, state, place); !status)
        return status;
    m_by_id.insert(state.id, {kind, m_scene.objects[kind].size()});
    m_highest = std::max(m_highest, state.id);
    return {};
}

Status SceneReader::claim_key(std::size_t kind, const ObjectState& state, const JsonCursor& place)
{
    const ObjectKind& row = m_document.kinds()[kind];
    if (m_scene.objects[kind].size() >= row.most)
        return place.fail(lang(u"%1过多（最多 %2 个）", u"there are too many objects of the kind \"%1\" (at most %2)")
                              .arg(lang(row.chinese, row.english))
                              .arg(row.most));
    if (!row.unique_key)
        return {};
    const QString wanted = row.unique_key(state);
    if (wanted.isEmpty())
        return place.fail(
            lang(u"%1 %2 不完整", u"%1 %2 is incomplete").arg(lang(row.chinese, row.english)).arg(state.id));
    QSet<QString>& taken = m_keys[kind];
    if (taken.contains(wanted))
        return place.fail(
            lang(u"%1 %2 出现了两次", u"the %1 \"%2\" appears twice").arg(lang(row.chinese, row.english), wanted));
    taken.insert(wanted);
    return {};
}

/// What was held to its rules while the object was read; 0 stands for a container.
void SceneReader::keep_held(quint32 object, JsonCursor& value)
{
    for (HeldValue& held : value.take_held()) {
        held.object = object;
        m_scene.held.append(std::move(held));
    }
}

Status SceneReader::read_object(std::size_t kind, JsonCursor& value)
{
    const ObjectKind& row = m_document.kinds()[kind];
    int type = -1;
    if (row.saves_type)
        if (auto status = value.peek_int("type", type); !status)
            return status;
    const StatePtr state(row.make_state(type));
    if (!state)
        return value.fail(
            lang(u"未知的%1类型 %2", u"the %1 type %2 is unknown").arg(lang(row.chinese, row.english)).arg(type));
    if (auto status = read_state(*state, value); !status)
        return status;
    if (row.fixed && state->id == 0)
        state->id = row.fixed->id();
    if (row.fixed && state->id != row.fixed->id())
        return value.fail(
            lang(u"%1的编号是 %2", u"the id of the %1 is %2").arg(lang(row.chinese, row.english)).arg(row.fixed->id()));
    if (auto status = claim_id(kind, *state, value); !status)
        return status;
    keep_held(state->id, value);
    m_scene.objects[kind].push_back(state);
    return {};
}

Status SceneReader::read(const PackagePart& part, QByteArray text, const Progress& progress)
{
    ObjectState& container = *m_scene.containers[m_document.part_of(*part.container)];
    Counter counter(progress, progress.is_watched() ? text.count('\n') : 1); // An object stands in a line.
    const auto read_next = [&](std::size_t kind, JsonCursor& element) {
        return counter.next() ? read_object(kind, element) : stopped();
    };
    QSet<QByteArray> seen;
    JsonText json(std::move(text), QLatin1String(part.entry));
    return json.each_member([&](std::string_view key, JsonCursor& value) -> Status {
        const QByteArray name(key.data(), qsizetype(key.size()));
        if (seen.contains(name))
            return twice(key, value);
        seen.insert(name);
        for (std::size_t k = 0; k < m_document.kinds().size(); ++k) {
            const ObjectKind& kind = m_document.kinds()[k];
            if (key != kind.key || std::string_view(kind.part) != part.entry)
                continue;
            return kind.fixed ? read_object(k, value)
                              : value.each_element([&](JsonCursor& element) { return read_next(k, element); });
        }
        auto status = read_member(container, key, value);
        keep_held(0, value);
        return status;
    });
}

/// What objects that are not recorded refer to may be gone: its id is not issued again therefore.
Status SceneReader::reserve_references(const ObjectKind& kind)
{
    quint32 highest = 0;
    for (const StatePtr& state : m_scene.objects[kind.place])
        for (const FieldBase* field : state->fields().link_fields())
            field->each_reference(std::as_const(*state),
                                  [&](ObjectRef reference) { highest = std::max(highest, reference.id); });
    if (highest > Document::max_id)
        return Status::error(
            lang(u"%1：编号 %2 无效。", u"%1: %2 is no valid id.").arg(QLatin1String(kind.part)).arg(highest));
    m_highest = std::max(m_highest, highest);
    return {};
}

Status SceneReader::link(std::size_t kind, const StatePtr& state)
{
    const ObjectKind& row = m_document.kinds()[kind];
    if (row.container) {
        state->parent = {row.container->id()};
        row.children(*m_scene.containers[m_document.part_of(*row.container)])->append(ObjectRef{state->id});
        return {};
    }
    const auto found = m_by_id.constFind(state->parent.id);
    IdList* children = found == m_by_id.constEnd() ? nullptr
                                                   : row.children(*m_scene.objects[found->first][found->second]);
    if (!children)
        return Status::error(
            lang(u"%1：%2 所属的对象 %3 不存在。", u"%1: %2 belongs to object %3, which does not exist.")
                .arg(QLatin1String(row.part), described(row, *state))
                .arg(state->parent.id));
    children->append(ObjectRef{state->id});
    return {};
}

Status SceneReader::finish(quint32 next_id)
{
    const auto& kinds = m_document.kinds();
    for (std::size_t k = 0; k < kinds.size(); ++k) {
        if (kinds[k].fixed && m_scene.objects[k].empty()) {
            m_scene.objects[k].emplace_back(kinds[k].fixed->fresh_state());
            m_by_id.insert(kinds[k].fixed->id(), {k, 0});
        }
    }
    for (std::size_t k = 0; k < kinds.size(); ++k)
        if (!kinds[k].fixed)
            for (const StatePtr& state : m_scene.objects[k])
                if (auto status = link(k, state); !status)
                    return status;
    for (const ObjectKind& kind : kinds)
        if (!kind.recorded)
            if (auto status = reserve_references(kind); !status)
                return status;
    // Nobody makes that many objects: it is not true, and would leave no ids for new ones.
    if (next_id > Document::max_id / 2)
        next_id = 0;
    m_scene.next_id = std::max(next_id, m_highest + 1);
    return {};
}

} // namespace tarn
