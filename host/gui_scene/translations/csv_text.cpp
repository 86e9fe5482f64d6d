#include "csv_text.h"

#include "core/document.h"
#include "core/journal.h"
#include "core/language.h"
#include "translations.h"

#include <QHash>
#include <QStringDecoder>

#include <algorithm>
#include <map>
#include <tuple>

namespace tarn {

namespace {

constexpr std::size_t most_cells = 1'000'000;
const QStringList first_captions{QStringLiteral("object"), QStringLiteral("attribute"), QStringLiteral("name"),
                                 QStringLiteral("text")};

QString cell_text(QString cell)
{
    static const QString special = QStringLiteral(",;\t\"\r\n");
    if (std::none_of(cell.begin(), cell.end(), [](QChar letter) { return special.contains(letter); }))
        return cell;
    return u'"' + cell.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

/// What parts the cells of the first line.
QChar separator_of(const QString& text)
{
    const QString line = text.left(text.indexOf(u'\n'));
    const auto less = [&](QChar a, QChar b) { return line.count(a) < line.count(b); };
    return std::max({QChar(u','), QChar(u';'), QChar(u'\t')}, less);
}

class CsvReader {
public:
    explicit CsvReader(const QString& text) : m_text(text), m_separator(separator_of(text)) {}

    Result<std::vector<QStringList>> read()
    {
        m_place = m_text.startsWith(QChar::ByteOrderMark) ? 1 : 0;
        while (m_place < m_text.size()) {
            if (++m_cells > most_cells)
                return Status::error(lang(u"表格过大", u"the table is too large"));
            if (!read_cell())
                return Status::error(
                    lang(u"第 %1 行的引号没有结束", u"a quote in line %1 does not end").arg(m_rows.size() + 1));
        }
        if (!m_row.isEmpty())
            m_rows.push_back(m_row);
        return std::move(m_rows);
    }

private:
    bool read_cell()
    {
        QString cell;
        if (m_text[m_place] == u'"' && !read_quoted(cell))
            return false;
        while (m_place < m_text.size() && m_text[m_place] != m_separator && m_text[m_place] != u'\n')
            cell.append(m_text[m_place++]);
        if (cell.endsWith(u'\r'))
            cell.chop(1);
        m_row.append(cell);
        if (m_place >= m_text.size())
            return true;
        if (m_text[m_place++] == u'\n')
            m_rows.push_back(std::exchange(m_row, {}));
        else if (m_place == m_text.size())
            m_row.append(QString());
        return true;
    }
    bool read_quoted(QString& cell)
    {
        for (++m_place; m_place < m_text.size(); ++m_place) {
            if (m_text[m_place] != u'"') {
                cell.append(m_text[m_place]);
            } else if (m_place + 1 < m_text.size() && m_text[m_place + 1] == u'"') {
                cell.append(u'"');
                ++m_place;
            } else {
                ++m_place;
                return true;
            }
        }
        return false;
    }

    const QString& m_text;
    const QChar m_separator;
    qsizetype m_place = 0;
    std::size_t m_cells = 0;
    QStringList m_row;
    std::vector<QStringList> m_rows;
};

using TextKey = std::tuple<QString, QString, QString>;

TextKey key_of(const SeenText& text)
{
    return {QString::number(text.object->id()), QString::fromLatin1(text.field->name()), text.text};
}

Result<QString> decoded(const QByteArray& table)
{
    const bool is_wide = table.startsWith("\xFF\xFE") || table.startsWith("\xFE\xFF");
    QStringDecoder decoder(is_wide ? QStringDecoder::Utf16 : QStringDecoder::Utf8);
    QString text = decoder(table);
    if (decoder.hasError())
        return Status::error(lang(u"表格不是 UTF-8 编码；请在表格软件中选择“CSV UTF-8”保存",
                                  u"the table is not in UTF-8; save it as \"CSV UTF-8\" in the spreadsheet program"));
    return text;
}

/// Fails for a table that is none of translations, or has a language twice.
Status check_captions(const std::vector<QStringList>& rows)
{
    const QStringList captions = rows.empty() ? QStringList() : rows.front();
    if (captions.first(std::min(first_captions.size(), captions.size())) != first_captions)
        return Status::error(
            lang(u"第一行应为：%1，然后是各种语言", u"the first line has to be: %1, then the languages")
                .arg(first_captions.join(QStringLiteral(", "))));
    for (qsizetype i = first_captions.size(); i < captions.size(); ++i)
        if (captions.indexOf(captions[i], i + 1) >= 0)
            return Status::error(lang(u"语言 %1 有两列", u"the language %1 has two columns").arg(captions[i]));
    return {};
}

} // namespace

QString csv_text(const std::vector<QStringList>& rows)
{
    QString text;
    for (const QStringList& row : rows) {
        QStringList cells;
        std::ranges::transform(row, std::back_inserter(cells), cell_text);
        text += cells.join(u',') + u'\n';
    }
    return text;
}

Result<std::vector<QStringList>> csv_rows(const QString& text)
{
    return CsvReader(text).read();
}

QString exported_translations(const Document& document, const Translations& translations)
{
    std::vector<QStringList> rows{first_captions + translations.languages()};
    for (const SeenText& text : seen_texts(document)) {
        const auto [object, attribute, source] = key_of(text);
        QStringList& row = rows.emplace_back(QStringList{object, attribute, known_name(*text.object), source});
        for (const QString& language : translations.languages())
            row.append(translations.text(text, language));
    }
    return csv_text(rows);
}

Result<ImportedTexts> import_translations(Document& document, Translations& translations, const QByteArray& table)
{
    const auto text = decoded(table);
    if (!text)
        return text.status();
    const auto rows = csv_rows(text.value());
    if (!rows)
        return rows.status();
    if (const auto fits = check_captions(rows.value()); !fits)
        return fits;
    const qsizetype fixed = first_captions.size();
    std::map<TextKey, SeenText> texts;
    for (const SeenText& one : seen_texts(document))
        texts.emplace(key_of(one), one);
    const QStringList languages = rows.value().front().mid(fixed);
    const UserAction action(document.journal(), lang(u"导入译文", u"Import Translations"));
    for (const QString& language : languages)
        if (!translations.languages().contains(language))
            if (auto status = translations.add_language(language); !status) {
                document.journal().cancel();
                return status;
            }
    ImportedTexts imported;
    for (std::size_t place = 1; place < rows.value().size(); ++place) {
        const QStringList& row = rows.value()[place];
        if (row == QStringList(QString()))
            continue; // An empty line.
        const auto found = row.size() > fixed ? texts.find({row[0], row[1], row[3]}) : texts.end();
        if (found == texts.end()) {
            if (imported.left_out++ == 0)
                imported.first_left_out = int(place) + 1;
            continue;
        }
        for (qsizetype i = 0; i < std::min(languages.size(), row.size() - fixed); ++i)
            if (const QString& cell = row[fixed + i];
                !cell.isEmpty() && cell != translations.text(found->second, languages[i])) {
                translations.set_text(found->second, languages[i], cell);
                ++imported.taken;
            }
    }
    return imported;
}

} // namespace tarn
