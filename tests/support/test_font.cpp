#include "test_font.h"

#include <QtEndian>

#include <initializer_list>
#include <utility>
#include <vector>

namespace tarn::test {

namespace {

constexpr int letters = 26;
constexpr int units = 1000; ///< to the em
constexpr int side = 800;   ///< of a square, units

QByteArray numbers16(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (const int value : values) {
        const quint16 big = qToBigEndian(quint16(value));
        bytes.append(reinterpret_cast<const char*>(&big), sizeof big);
    }
    return bytes;
}

QByteArray number32(quint32 value)
{
    const quint32 big = qToBigEndian(value);
    return {reinterpret_cast<const char*>(&big), sizeof big};
}

QByteArray head_table()
{
    return number32(0x00010000) + number32(0x00010000) + number32(0) + number32(0x5f0f3cf5) + numbers16({0, units})
        + QByteArray(16, '\0') + numbers16({0, 0, side, side, 0, 8, 2, 0, 0});
}

QByteArray square()
{
    return numbers16({1, 0, 0, side, side, 3, 0}) + QByteArray(4, '\1') + numbers16({0, side, 0, -side})
        + numbers16({0, 0, side, 0});
}

QByteArray letter_map()
{
    return numbers16({0, 1, 3, 1}) + number32(12)
        + numbers16({4, 32, 0, 4, 4, 1, 0, 'Z', 0xffff, 0, 'A', 0xffff, 1 - 'A', 1, 0, 0});
}

} // namespace

QByteArray TestFont::name_table() const
{
    const std::vector<std::pair<int, QString>> texts{{0, copyright}, {1, family},   {2, QStringLiteral("Regular")},
                                                     {4, family},    {13, licence}, {14, address}};
    QByteArray records;
    QByteArray storage;
    int count = 0;
    for (const auto& [id, text] : texts) {
        if (text.isEmpty())
            continue;
        QByteArray encoded;
        for (const QChar unit : text)
            encoded += numbers16({unit.unicode()});
        records += numbers16({3, 1, 0x409, id, int(encoded.size()), int(storage.size())});
        storage += encoded;
        ++count;
    }
    return numbers16({0, count, 6 + 12 * count}) + records + storage;
}

QByteArray TestFont::bytes() const
{
    QByteArray glyphs;
    QByteArray places = numbers16({0});
    for (int letter = 0; letter <= letters; ++letter) {
        if (letter > 0)
            glyphs += square();
        places += numbers16({int(glyphs.size() / 2)});
    }
    const std::vector<std::pair<QByteArray, QByteArray>> tables{
        {"cmap", letter_map()},
        {"glyf", glyphs},
        {"head", head_table()},
        {"hhea",
         number32(0x00010000) + numbers16({side, side - units, 0, units, 0, 0, side, 1, 0, 0, 0, 0, 0, 0, 0, 1})},
        {"hmtx", numbers16({units, 0}) + QByteArray(2 * letters, '\0')},
        {"loca", places},
        {"maxp", number32(0x00010000) + numbers16({letters + 1, 4, 1, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0})},
        {"name", name_table()},
        {"post", number32(0x00030000) + QByteArray(28, '\0')}};
    QByteArray directory = number32(0x00010000) + numbers16({int(tables.size()), 128, 3, 16});
    QByteArray content;
    const int start = int(directory.size() + 16 * tables.size());
    for (const auto& [tag, table] : tables) {
        directory += tag + number32(0) + number32(quint32(start + content.size())) + number32(quint32(table.size()));
        content += table + QByteArray((4 - table.size() % 4) % 4, '\0');
    }
    return directory + content;
}

} // namespace tarn::test
