#include "translation_table.h"

#include "core/language.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/layout_problems.h"
#include "gui_scene/translations/translations.h"

#include <QColor>

#include <algorithm>

namespace tarn {

namespace {

// Behind the letters, so that they are legible in the light and in the dark theme.
const QColor missing_color(0x80, 0x80, 0x80, 50);
const QColor outdated_color(0xd0, 0x9a, 0x20, 70);
const QColor too_long_color(0xd0, 0x40, 0x30, 70);

} // namespace

QString TranslationTable::Fault::told() const
{
    QStringList lines;
    if (missing)
        lines.append(lang(u"没有译文", u"There is no translation"));
    if (outdated)
        lines.append(lang(u"翻译之后原文改过", u"The text was changed after it was translated"));
    if (too_long)
        lines.append(lang(u"文字放不下", u"The text does not fit"));
    return lines.join(u'\n');
}

TranslationTable::Fault TranslationTable::fault(const SeenText& text, const QString& language) const
{
    const Translations& all = m_scene->translations();
    const bool missing = all.text(text, language).isEmpty();
    return {.missing = missing,
            .outdated = !missing && all.is_outdated(text),
            .too_long = !missing && m_cut.value(language).contains(text.object->id())};
}

bool TranslationTable::passes(const SeenText& text, const QStringList& languages, Filter filter,
                              const QString& wanted) const
{
    const auto is_wanted = [&](const QString& cell) { return cell.contains(wanted, Qt::CaseInsensitive); };
    const Translations& all = m_scene->translations();
    if (!wanted.isEmpty() && !is_wanted(text.text) && !is_wanted(known_name(*text.object))
        && std::ranges::none_of(languages, [&](const QString& one) { return is_wanted(all.text(text, one)); }))
        return false;
    return filter == Filter::All || std::ranges::any_of(languages, [&](const QString& language) {
               const Fault found = fault(text, language);
               return filter == Filter::Missing ? found.missing
                   : filter == Filter::Outdated ? found.outdated
                                                : found.too_long;
           });
}

void TranslationTable::show(CGuiPlugScene* scene, Filter filter, const QString& wanted)
{
    const QStringList languages = scene ? scene->translations().languages() : QStringList();
    const bool had_languages = m_scene == scene && m_languages == languages;
    m_scene = scene;
    std::vector<SeenText> rows;
    if (scene)
        rows = seen_texts(scene->document());
    std::erase_if(rows, [&](const SeenText& text) { return !passes(text, languages, filter, wanted); });
    if (had_languages && rows == m_rows)
        return tell_data();
    beginResetModel();
    m_languages = languages;
    m_rows = std::move(rows);
    endResetModel();
}

void TranslationTable::tell_data()
{
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void TranslationTable::measure()
{
    if (!m_scene || m_scene->is_playing())
        return; // What was found before stays.
    m_cut.clear();
    for (const QString& language : m_languages)
        m_cut.insert(language, find_cut_texts(*m_scene, language));
    tell_data();
}

int TranslationTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int TranslationTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : first_language + int(m_languages.size());
}

QVariant TranslationTable::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || !m_scene)
        return {};
    const SeenText& row = text(index.row());
    const QString in = language(index.column());
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return index.column() == Object ? known_name(*row.object)
            : index.column() == Text    ? row.text
                                        : m_scene->translations().text(row, in);
    if (in.isEmpty())
        return {};
    const Fault found = fault(row, in);
    if (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole)
        return found.told();
    if (role == Qt::BackgroundRole)
        return found.too_long ? too_long_color
            : found.outdated  ? outdated_color
            : found.missing   ? QVariant(missing_color)
                              : QVariant();
    return {};
}

bool TranslationTable::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const QString in = language(index.column());
    if (role != Qt::EditRole || in.isEmpty() || !on_edit || value.toString() == data(index, role).toString())
        return false;
    on_edit(SeenText(text(index.row())), in, value.toString());
    return true;
}

QVariant TranslationTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Object ? lang(u"对象", u"Object") : section == Text ? lang(u"原文", u"Text") : language(section);
}

Qt::ItemFlags TranslationTable::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags always = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() >= first_language ? always | Qt::ItemIsEditable : always;
}

} // namespace tarn
