#include "key_value.h"

#include "core/field_type.h"
#include "core/language.h"

#include <QColor>
#include <QMatrix4x4>
#include <QQuaternion>
#include <QRegularExpression>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tarn {

namespace {

quint32 word(float number)
{
    return std::bit_cast<quint32>(number);
}

struct Placement {
    QVector3D place;
    QQuaternion turn;
    QVector3D scale;
};

Placement placement_of(const KeyValue& value)
{
    const auto part = [&](int index) { return value.part(index); };
    const QQuaternion turn(part(6), part(3), part(4), part(5));
    return {QVector3D(part(0), part(1), part(2)), turn.isNull() ? QQuaternion() : turn.normalized(),
            QVector3D(part(7), part(8), part(9))};
}

KeyValue value_of(const Placement& p)
{
    const std::array<quint32, 10> words{word(p.place.x()), word(p.place.y()), word(p.place.z()),     word(p.turn.x()),
                                        word(p.turn.y()),  word(p.turn.z()),  word(p.turn.scalar()), word(p.scale.x()),
                                        word(p.scale.y()), word(p.scale.z())};
    return KeyValue(VarType::Mat, words);
}

QList<double> matrix_numbers(const Placement& p)
{
    const QMatrix3x3 turn = p.turn.toRotationMatrix();
    QList<double> numbers;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            numbers.append(double(turn(column, row)) * double(p.scale[row]));
        numbers.append(0);
    }
    return numbers << double(p.place.x()) << double(p.place.y()) << double(p.place.z()) << 1;
}

/// What slants is left out: a key keeps place, turn and scale.
Placement from_matrix(std::span<const double> n)
{
    Placement p;
    QMatrix3x3 turn;
    for (int row = 0; row < 3; ++row) {
        const auto* line = &n[std::size_t(row) * 4];
        const QVector3D axis{float(line[0]), float(line[1]), float(line[2])};
        p.scale[row] = axis.length();
        for (int column = 0; column < 3; ++column)
            turn(column, row) = p.scale[row] > 0 ? axis[column] / p.scale[row] : float(row == column);
        p.place[row] = float(n[std::size_t(12 + row)]);
    }
    const auto axis = [&](int row) { return QVector3D(turn(0, row), turn(1, row), turn(2, row)); };
    if (QVector3D::dotProduct(QVector3D::crossProduct(axis(0), axis(1)), axis(2)) < 0) { // mirrored
        p.scale[0] = -p.scale[0];
        for (int column = 0; column < 3; ++column)
            turn(column, 0) = -turn(column, 0);
    }
    p.turn = QQuaternion::fromRotationMatrix(turn).normalized();
    return p;
}

QString number_text(double number)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, float(number)).ptr;
    return QString::fromLatin1(digits, end - digits);
}

bool is_byte(double number)
{
    return number >= 0 && number <= 255;
}

} // namespace

KeyValue::KeyValue(VarType type) : m_type(type)
{
    if (type == VarType::Color)
        m_words[0] = 0xffffffff;
    if (type == VarType::Mat)
        for (const std::size_t one : {6, 7, 8, 9})
            m_words[one] = word(1);
}

KeyValue::KeyValue(VarType type, std::span<const quint32> words) : m_type(type)
{
    std::copy_n(words.begin(), words_of(type), m_words.begin());
}

KeyValue KeyValue::number(float number)
{
    return KeyValue(VarType::Float, std::array{word(number)});
}

KeyValue KeyValue::whole(int number)
{
    return KeyValue(VarType::Int, std::array{quint32(number)});
}

KeyValue KeyValue::vec(float x, float y, float z)
{
    return KeyValue(VarType::Vec, std::array{word(x), word(y), word(z)});
}

KeyValue KeyValue::color(quint32 argb)
{
    return KeyValue(VarType::Color, std::array{argb});
}

QList<double> KeyValue::numbers() const
{
    switch (m_type) {
    case VarType::Int: return {double(as_int())};
    case VarType::Color: {
        const QColor color = QColor::fromRgba(as_color());
        return {double(color.red()), double(color.green()), double(color.blue()), double(color.alpha())};
    }
    case VarType::Mat: return matrix_numbers(placement_of(*this));
    case VarType::Float:
    case VarType::Vec: break;
    }
    QList<double> numbers;
    for (int i = 0; i < words_of(m_type); ++i)
        numbers.append(double(part(i)));
    return numbers;
}

bool KeyValue::from_numbers(VarType type, std::span<const double> numbers, KeyValue& out)
{
    KeyValue value(type);
    const auto fits = [](double number) { return is_sound(float(number)); };
    if (!std::all_of(numbers.begin(), numbers.end(), fits))
        return false;
    if (type == VarType::Int) {
        if (numbers.size() != 1 || std::abs(numbers[0]) > double(std::numeric_limits<int>::max()))
            return false;
        value = whole(int(numbers[0]));
    } else if (type == VarType::Color) {
        if (numbers.size() != 4 || !std::all_of(numbers.begin(), numbers.end(), is_byte))
            return false;
        value = color(qRgba(int(numbers[0]), int(numbers[1]), int(numbers[2]), int(numbers[3])));
    } else if (type == VarType::Mat && numbers.size() == 16) {
        value = value_of(from_matrix(numbers));
    } else {
        if (numbers.size() != std::size_t(words_of(type)) || type == VarType::Mat)
            return false;
        for (std::size_t i = 0; i < numbers.size(); ++i)
            value.m_words[i] = word(float(numbers[i]));
    }
    out = value;
    return true;
}

Value KeyValue::to_value() const
{
    switch (m_type) {
    case VarType::Float: return double(part(0));
    case VarType::Int: return qint64(as_int());
    case VarType::Vec:
    case VarType::Color:
    case VarType::Mat: break;
    }
    return numbers();
}

Status KeyValue::from_value(VarType type, const Value& value, KeyValue& out)
{
    NumberList numbers;
    if (const auto* list = std::get_if<NumberList>(&value))
        numbers = *list;
    else if (const auto* real = std::get_if<double>(&value))
        numbers = {*real};
    else if (const auto* whole = std::get_if<qint64>(&value))
        numbers = {double(*whole)};
    else if (const auto* flag = std::get_if<bool>(&value))
        numbers = {*flag ? 1.0 : 0.0};
    if (from_numbers(type, {numbers.constData(), std::size_t(numbers.size())}, out))
        return {};
    return Status::error(lang(u"该值与变量的类型不符", u"this is no value of the variable's type"));
}

QString KeyValue::to_text() const
{
    if (m_type == VarType::Int)
        return QString::number(as_int());
    QStringList texts;
    for (const double number : numbers())
        texts << number_text(number);
    return texts.join(QStringLiteral(", "));
}

bool KeyValue::from_text(VarType type, const QString& text, KeyValue& out)
{
    const QString trimmed = text.trimmed();
    static const QRegularExpression hex(QStringLiteral("^(#|0x)([0-9a-fA-F]{6}|[0-9a-fA-F]{8})$"));
    if (const auto match = hex.match(trimmed); type == VarType::Color && match.hasMatch()) {
        const QString digits = match.captured(2);
        out = color(digits.toUInt(nullptr, 16) | (digits.size() == 6 ? 0xff000000 : 0));
        return true;
    }
    static const QRegularExpression separator(QStringLiteral("[\\s,;，；]+"));
    std::vector<double> numbers;
    for (const QString& part : trimmed.split(separator, Qt::SkipEmptyParts)) {
        bool is_number = false;
        numbers.push_back(part.toDouble(&is_number));
        if (!is_number)
            return false;
    }
    return from_numbers(type, numbers, out);
}

KeyValue mix(const KeyValue& a, const KeyValue& b, float way)
{
    switch (a.type()) {
    case VarType::Int:
        return KeyValue::whole(int(std::lround(a.as_int() + (double(b.as_int()) - a.as_int()) * double(way))));
    case VarType::Color: return KeyValue::color(mix_color(a.as_color(), b.as_color(), way));
    case VarType::Mat: {
        const Placement from = placement_of(a);
        const Placement to = placement_of(b);
        return value_of({from.place + way * (to.place - from.place), QQuaternion::slerp(from.turn, to.turn, way),
                         from.scale + way * (to.scale - from.scale)});
    }
    case VarType::Float:
    case VarType::Vec: break;
    }
    std::array<quint32, KeyValue::max_words> words{};
    for (int i = 0; i < KeyValue::words_of(a.type()); ++i)
        words[std::size_t(i)] = word(a.part(i) + way * (b.part(i) - a.part(i)));
    return KeyValue(a.type(), words);
}

} // namespace tarn
