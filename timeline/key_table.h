#pragma once

#include "animation/timebar.h"
#include "key_rows.h"

#include <QTableView>

class CAnimationScene;

namespace tarn {

class KeyTableModel;
struct ModelChange;

/// The keys that the timeline shows as a list, for the keyboard and for exact numbers: sorted by any column, edited in
/// many rows at once, exchanged with spreadsheets through the clipboard.
class KeyTable : public QTableView {
    Q_OBJECT

public:
    explicit KeyTable(QWidget* parent = nullptr);
    ~KeyTable() override;

    /// Outlives the table; null takes it away.
    void set_scene(CAnimationScene* scene);
    /// Shows the current timebar's keys as they are now. Cheap while the table is hidden.
    void refresh();
    void follow(const ModelChange& change);

    void copy() const;
    void paste();
    void remove();

Q_SIGNALS:
    /// The author wants to see what is there at that time.
    void time_chosen(float time);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    CTimebar* bar() const; ///< null for none
    std::vector<KeyPlace> selected_keys() const;
    bool edit(const QModelIndex& index, const QString& text);
    void select(const KeySelection& keys);
    void go_to_current();

    KeyTableModel* m_model;
    CAnimationScene* m_scene = nullptr;
};

} // namespace tarn
