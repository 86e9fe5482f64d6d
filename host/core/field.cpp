#include "field.h"

#include "language.h"
#include "utf8.h"

#include <QTextBoundaryFinder>

#include <bitset>
#include <cmath>

namespace tarn {

QString cut_text(const QString& text, int units)
{
    if (text.size() <= units)
        return text;
    // The finder works through all that it is given, and a script's texts are long. Whether a character ends somewhere
    // hangs on what stands before and little behind.
    constexpr qsizetype look_ahead = 256;
    const qsizetype length = std::min(text.size(), units + look_ahead);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.constData(), length);
    finder.setPosition(units);
    if (!finder.isAtBoundary())
        finder.toPreviousBoundary();
    return text.left(std::max<qsizetype>(finder.position(), 0));
}

QStringList FieldBase::pictures(const ObjectState& state) const
{
    if (!m_rules.picture)
        return {};
    const Value value = get(state);
    const auto* one = std::get_if<QString>(&value);
    QStringList names = one ? QStringList(*one) : std::get<QStringList>(value);
    names.removeAll(QString());
    return names;
}

void FieldBase::rename_pictures(ObjectState& state, const std::function<QString(const QString&)>& renamed) const
{
    if (!m_rules.picture || is_default(state))
        return;
    Value value = get(state);
    if (auto* one = std::get_if<QString>(&value)) {
        *one = renamed(*one);
    } else {
        for (QString& name : std::get<QStringList>(value))
            if (!name.isEmpty())
                name = renamed(name);
    }
    (void)set(state, value);
}

namespace detail {

namespace {

Status not_a_number()
{
    return Status::error(lang(u"需要数字", u"a number is needed"));
}

/// A finite number from whatever a script calls one; a bool counts as 0 or 1.
Status number_from(const Value& value, double& number)
{
    if (const auto* whole = std::get_if<qint64>(&value))
        number = static_cast<double>(*whole);
    else if (const auto* real = std::get_if<double>(&value))
        number = *real;
    else if (const auto* flag = std::get_if<bool>(&value))
        number = *flag ? 1 : 0;
    else
        return not_a_number();
    return std::isfinite(number) ? Status() : not_a_number();
}

/// Of an empty list nobody can tell what it would hold.
bool is_empty_list(const Value& value)
{
    const auto* texts = std::get_if<QStringList>(&value);
    const auto* numbers = std::get_if<NumberList>(&value);
    return (texts && texts->isEmpty()) || (numbers && numbers->isEmpty());
}

template <class T>
Status integer_from(const Value& value, const FieldRules& rules, T& out)
{
    double number = 0;
    if (auto status = number_from(value, number); !status)
        return status;
    number = std::trunc(number);
    if (number < static_cast<double>(std::numeric_limits<T>::min())
        || number > static_cast<double>(std::numeric_limits<T>::max()))
        return Status::error(lang(u"数字超出范围", u"this number is out of range"));
    out = static_cast<T>(number);
    hold_to_rules(rules, out);
    return {};
}

} // namespace

Value to_value(bool value)
{
    return value;
}
Value to_value(int value)
{
    return qint64(value);
}
Value to_value(quint32 value)
{
    return qint64(value);
}
Value to_value(float value)
{
    return double(value);
}
Value to_value(const QString& value)
{
    return value;
}
Value to_value(const QStringList& value)
{
    return value;
}
Value to_value(const QList<quint32>& value)
{
    return NumberList(value.begin(), value.end());
}
Value to_value(ObjectRef value)
{
    return qint64(value.id);
}

Status from_value(const Value& value, const FieldRules&, bool& out)
{
    double number = 0;
    auto status = number_from(value, number);
    out = number != 0;
    return status;
}

Status from_value(const Value& value, const FieldRules& rules, int& out)
{
    return integer_from(value, rules, out);
}

Status from_value(const Value& value, const FieldRules& rules, quint32& out)
{
    return integer_from(value, rules, out);
}

Status from_value(const Value& value, const FieldRules& rules, float& out)
{
    double number = 0;
    if (auto status = number_from(value, number); !status)
        return status;
    out = static_cast<float>(number);
    if (!std::isfinite(out))
        return Status::error(lang(u"数字超出范围", u"this number is out of range"));
    hold_to_rules(rules, out);
    return {};
}

Status from_value(const Value& value, const FieldRules& rules, QString& out)
{
    const auto* text = std::get_if<QString>(&value);
    if (!text)
        return Status::error(lang(u"需要文本", u"a text is needed"));
    out = *text;
    hold_to_rules(rules, out);
    return {};
}

Status from_value(const Value& value, const FieldRules& rules, QStringList& out)
{
    const auto* list = std::get_if<QStringList>(&value);
    if (!list && !is_empty_list(value))
        return Status::error(lang(u"需要文本列表", u"a list of texts is needed"));
    out = list ? *list : QStringList();
    hold_to_rules(rules, out);
    return {};
}

Status from_value(const Value& value, const FieldRules& rules, QList<quint32>& out)
{
    const auto* list = std::get_if<NumberList>(&value);
    if (!list && !is_empty_list(value))
        return Status::error(lang(u"需要数字列表", u"a list of numbers is needed"));
    QList<quint32> numbers;
    for (const double given : list ? *list : NumberList()) {
        quint32 number = 0;
        if (auto status = integer_from(given, FieldRules(), number); !status)
            return status;
        numbers.append(number);
    }
    hold_to_rules(rules, numbers);
    out = std::move(numbers);
    return {};
}

Status from_value(const Value& value, const FieldRules& rules, ObjectRef& out)
{
    return integer_from(value, rules, out.id);
}

} // namespace detail

int FieldTable::index_of(std::string_view name, int hint) const
{
    const int count = static_cast<int>(m_fields.size());
    for (int i = 0; i < count; ++i) {
        const int index = (hint + i) % count;
        if (name == m_names[static_cast<std::size_t>(index)])
            return index;
    }
    return -1;
}

const FieldBase* FieldTable::find(std::string_view name) const
{
    const int index = index_of(name);
    return index < 0 ? nullptr : m_fields[static_cast<std::size_t>(index)];
}

void FieldTable::add(std::unique_ptr<FieldBase> field)
{
    m_fields.push_back(field.get());
    m_names.emplace_back(field->name());
    m_own.push_back(std::move(field));
}

void write_state(const ObjectState& state, JsonWriter& writer)
{
    writer.begin_object();
    for (const FieldBase* field : state.fields()) {
        if (field->rules().derived || field->is_default(state))
            continue;
        writer.key(field->name());
        field->write(state, writer);
    }
    for (const auto& [name, json] : state.unknown)
        writer.raw_member(name, {json.constData(), static_cast<std::size_t>(json.size())});
    writer.end_object();
}

Status read_state(ObjectState& state, JsonCursor& cursor)
{
    const FieldTable& table = state.fields();
    std::bitset<256> seen;
    int hint = 0;
    return cursor.each_member([&](std::string_view key, JsonCursor& value) {
        const int index = table.index_of(key, hint);
        if (index < 0) {
            QByteArray json;
            auto status = value.read_raw(json);
            state.unknown.append({from_utf8(key), json});
            return status;
        }
        hint = index + 1;
        if (seen.test(static_cast<std::size_t>(index)))
            return value.fail(lang(u"\"%1\" 出现了两次", u"\"%1\" appears twice")
                                  .arg(QString::fromLatin1(table.at(static_cast<std::size_t>(index))->name())));
        seen.set(static_cast<std::size_t>(index));
        auto status = table.at(static_cast<std::size_t>(index))->read(state, value);
        if (status)
            return status;
        return Status::error(
            QStringLiteral("%1 (\"%2\")")
                .arg(status.message(), QString::fromLatin1(table.at(static_cast<std::size_t>(index))->name())));
    });
}

} // namespace tarn
