#include "field_type.h"

#include "language.h"

#include <QTextBoundaryFinder>

#include <algorithm>
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

namespace {

Status not_a_number()
{
    return Status::error(lang(u"需要数字", u"a number is needed"));
}

Status number_out_of_range()
{
    return Status::error(lang(u"数字超出范围", u"this number is out of range"));
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

/// Of an empty list nobody can tell what it would hold, or whether it is a map.
bool is_empty_list(const Value& value)
{
    const auto is_empty = [](const auto& held) {
        if constexpr (requires { held.isEmpty(); } && !std::is_same_v<decltype(held), const QString&>)
            return held.isEmpty();
        else
            return false;
    };
    return std::visit(is_empty, value);
}

Status list_of_numbers_needed()
{
    return Status::error(lang(u"需要数字列表", u"a list of numbers is needed"));
}

/// The elements of `numbers` as E, each held to `rules`; `add` takes them.
template <class E, class Numbers, class Add>
Status each_from(const Numbers& numbers, const FieldRules& rules, Add add)
{
    for (auto number = numbers.begin(); number != numbers.end(); ++number) {
        E element{};
        if (auto status = FieldType<E>::from_value(*number, rules, element); !status)
            return status;
        add(number, element);
    }
    return {};
}

} // namespace

template <class T>
Value detail::NumberType<T>::to_value(T value)
{
    using Held = std::conditional_t<std::is_integral_v<T>, qint64, double>;
    return Held(value);
}

template <class T>
Status detail::NumberType<T>::from_value(const Value& value, const FieldRules& rules, T& out)
{
    double number = 0;
    if (auto status = number_from(value, number); !status)
        return status;
    if constexpr (std::is_integral_v<T>)
        number = std::trunc(number);
    if (number < static_cast<double>(std::numeric_limits<T>::lowest())
        || number > static_cast<double>(std::numeric_limits<T>::max()))
        return number_out_of_range();
    out = static_cast<T>(number);
    hold(rules, out);
    return {};
}

template <class T>
void detail::NumberType<T>::hold(const FieldRules& rules, T& value)
{
    if (static_cast<double>(value) < rules.minimum)
        value = static_cast<T>(rules.minimum);
    else if (static_cast<double>(value) > rules.maximum)
        value = static_cast<T>(rules.maximum);
}

template struct detail::NumberType<int>;
template struct detail::NumberType<quint32>;
template struct detail::NumberType<float>;

template <class E>
Status detail::MapType<E>::read(JsonCursor& cursor, Map& out)
{
    out.clear();
    return cursor.each_member([&](std::string_view name, JsonCursor& value) {
        const auto text = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
        if (out.contains(text))
            return value.fail(lang(u"\"%1\" 出现了两次", u"\"%1\" appears twice").arg(text));
        return FieldType<E>::read(value, out[text]);
    });
}

template struct detail::MapType<QString>;
template struct detail::MapType<quint32>;

Status FieldType<bool>::from_value(const Value& value, const FieldRules&, bool& out)
{
    double number = 0;
    auto status = number_from(value, number);
    if (status)
        out = number != 0;
    return status;
}

Status FieldType<QString>::from_value(const Value& value, const FieldRules& rules, QString& out)
{
    const auto* text = std::get_if<QString>(&value);
    if (!text)
        return Status::error(lang(u"需要文本", u"a text is needed"));
    out = *text;
    hold(rules, out);
    return {};
}

void FieldType<QString>::hold(const FieldRules& rules, QString& value)
{
    if (value.size() > rules.max_length)
        value = cut_text(value, rules.max_length);
}

Status FieldType<ObjectRef>::from_value(const Value& value, const FieldRules& rules, ObjectRef& out)
{
    const auto* reference = std::get_if<ObjectRef>(&value);
    if (!reference)
        return FieldType<quint32>::from_value(value, rules, out.id);
    out = *reference;
    return {};
}

Status FieldType<QStringList>::from_value(const Value& value, const FieldRules& rules, QStringList& out)
{
    const auto* list = std::get_if<QStringList>(&value);
    if (!list && !is_empty_list(value))
        return Status::error(lang(u"需要文本列表", u"a list of texts is needed"));
    out = list ? *list : QStringList();
    hold(rules, out);
    return {};
}

Status FieldType<QList<quint32>>::from_value(const Value& value, const FieldRules& rules, QList<quint32>& out)
{
    const auto* list = std::get_if<NumberList>(&value);
    if (!list && !is_empty_list(value))
        return list_of_numbers_needed();
    QList<quint32> numbers;
    auto status = each_from<quint32>(list ? *list : NumberList(), FieldRules(),
                                     [&](auto, quint32 number) { numbers.append(number); });
    if (status) {
        hold(rules, numbers);
        out = std::move(numbers);
    }
    return status;
}

Status FieldType<IdList>::from_value(const Value& value, const FieldRules& rules, IdList& out)
{
    if (const auto* list = std::get_if<IdList>(&value)) {
        out = *list;
        return {};
    }
    QList<quint32> numbers;
    auto status = FieldType<QList<quint32>>::from_value(value, rules, numbers);
    if (status) {
        out.clear();
        for (const quint32 id : numbers)
            out.append(ObjectRef{id});
    }
    return status;
}

Status FieldType<TextMap>::from_value(const Value& value, const FieldRules& rules, TextMap& out)
{
    const auto* map = std::get_if<TextMap>(&value);
    if (!map && !is_empty_list(value))
        return Status::error(lang(u"需要以名称为键的文本表", u"a table of texts by name is needed"));
    out = map ? *map : TextMap();
    hold(rules, out);
    return {};
}

Value FieldType<QMap<QString, quint32>>::to_value(const QMap<QString, quint32>& value)
{
    NumberMap numbers;
    for (auto entry = value.begin(); entry != value.end(); ++entry)
        numbers.insert(numbers.end(), entry.key(), *entry);
    return numbers;
}

Status FieldType<QMap<QString, quint32>>::from_value(const Value& value, const FieldRules& rules,
                                                     QMap<QString, quint32>& out)
{
    const auto* map = std::get_if<NumberMap>(&value);
    if (!map && !is_empty_list(value))
        return Status::error(lang(u"需要以名称为键的数字表", u"a table of numbers by name is needed"));
    QMap<QString, quint32> numbers;
    auto status = each_from<quint32>(map ? *map : NumberMap(), rules,
                                     [&](auto entry, quint32 number) { numbers.insert(entry.key(), number); });
    if (status) {
        hold(rules, numbers);
        out = std::move(numbers);
    }
    return status;
}

} // namespace tarn
