#include "movie_answers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace tarn {

namespace {

constexpr qsizetype head_size = 16;
constexpr qsizetype most_given = 100;
constexpr qsizetype longest_name = 1000; ///< UTF-16 units

struct Head {
    quint32 kind;
    quint32 movie;
    quint32 width;
    quint32 height;
};

Head head_at(const char* bytes)
{
    std::array<quint32, 4> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = qFromLittleEndian<quint32>(bytes + i * 4);
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

/// How many bytes follow the head; nothing for a head that cannot be.
std::optional<qsizetype> content_size(const Head& head)
{
    using Limits = MovieAnswers;
    switch (head.kind) {
    case 1:
    case 4: return head.width <= Limits::longest_text ? std::optional(qsizetype(head.width)) : std::nullopt;
    case 2:
        if (head.width == 0 || head.height == 0 || head.width > Limits::largest_side
            || head.height > Limits::largest_side || head.width * head.height > Limits::most_pixels)
            return std::nullopt;
        return qsizetype(head.width) * head.height * 4;
    case 3:
    case 5: return 0;
    default: return std::nullopt;
    }
}

Value value_of(const QJsonValue& json)
{
    if (json.isBool())
        return json.toBool();
    if (json.isDouble()) {
        const double number = json.toDouble();
        return qint64(number) == number && std::abs(number) < 1e15 ? Value(qint64(number)) : Value(number);
    }
    if (json.isString())
        return json.toString();
    if (!json.isArray())
        return {};
    QStringList texts;
    for (const QJsonValue& one : json.toArray())
        texts << one.toVariant().toString();
    return texts;
}

bool read_event(const QByteArray& text, MovieAnswer& answer)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    const QJsonObject event = document.object();
    answer.event = event.value(QLatin1String("type")).toString();
    answer.name = event.value(QLatin1String(answer.event == QLatin1String("failed") ? "reason" : "name")).toString();
    answer.name.truncate(longest_name);
    answer.number = quint32(event.value(QLatin1String("number")).toInteger());
    if (event.contains(QLatin1String("value")))
        answer.given.push_back(value_of(event.value(QLatin1String("value"))));
    const QJsonArray given = event.value(QLatin1String("given")).toArray();
    for (qsizetype i = 0; i < std::min(given.size(), most_given); ++i)
        answer.given.push_back(value_of(given[i]));
    return document.isObject();
}

QImage picture_of(const Head& head, const char* pixels)
{
    const QImage given(reinterpret_cast<const uchar*>(pixels), int(head.width), int(head.height), int(head.width) * 4,
                       QImage::Format_RGBA8888_Premultiplied);
    return given.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

bool MovieAnswers::feed(const QByteArray& bytes, std::vector<MovieAnswer>& answers)
{
    if (m_broken)
        return false;
    m_waiting += bytes;
    qsizetype at = 0;
    while (m_waiting.size() - at >= head_size) {
        const Head head = head_at(m_waiting.constData() + at);
        const auto size = content_size(head);
        if (!size) {
            m_broken = true;
            m_waiting.clear();
            return false;
        }
        if (m_waiting.size() - at - head_size < *size)
            break;
        const char* content = m_waiting.constData() + at + head_size;
        MovieAnswer answer{.kind = MovieAnswer::Kind(head.kind - 1), .movie = head.movie};
        if (answer.kind == MovieAnswer::Kind::Picture)
            answer.picture = picture_of(head, content);
        else if (answer.kind == MovieAnswer::Kind::Event && !read_event(QByteArray(content, *size), answer))
            m_broken = true;
        answers.push_back(std::move(answer));
        at += head_size + *size;
    }
    m_waiting.remove(0, at);
    return !m_broken;
}

} // namespace tarn
