#pragma once

#include "gui_scene/translations/seen_texts.h"

#include <QAbstractTableModel>
#include <QSet>

#include <functional>

class CGuiPlugScene;

namespace tarn {

/// The texts of a scene as rows, its languages as columns behind object and text.
class TranslationTable final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    enum Column { Object, Text, first_language };
    enum class Filter { All, Missing, Outdated, TooLong };

    /// Null shows nothing. `wanted` is a part of what stands in a row. Whoever types in a cell goes on as long as the rows stay
    /// the same.
    void show(CGuiPlugScene* scene, Filter filter, const QString& wanted);
    /// Finds anew which texts do not fit; not while the scene runs. It is work: each language is laid out.
    void measure();
    const SeenText& text(int row) const { return m_rows[std::size_t(row)]; }
    /// The language of a column; "" for the first ones.
    QString language(int column) const { return m_languages.value(column - first_language); }
    /// The author typed into a cell.
    std::function<void(const SeenText& text, const QString& language, const QString& translated)> on_edit;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Fault {
        bool missing = false;
        bool outdated = false;
        bool too_long = false;
        QString told() const;
    };
    Fault fault(const SeenText& text, const QString& language) const;
    void tell_data();
    bool passes(const SeenText& text, const QStringList& languages, Filter filter, const QString& wanted) const;

    CGuiPlugScene* m_scene = nullptr;
    QStringList m_languages;
    QHash<QString, QSet<quint32>> m_cut; ///< objects whose texts do not fit, by language
    std::vector<SeenText> m_rows;
};

} // namespace tarn
