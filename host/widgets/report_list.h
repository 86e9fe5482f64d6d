#pragma once

#include <QHash>
#include <QIcon>
#include <QList>
#include <QTableView>

#include <optional>
#include <vector>

namespace tarn {
class ReportModel;
} // namespace tarn

/// A list of several columns whose rows are each bound to one object, named by an opaque pointer that the list never
/// follows. A subclass says what an object is called in each column; it is asked only for rows that are painted, and
/// for all of them when a column is sorted. Refilling with 100,000 rows costs a few milliseconds.
///
/// A row index counts from the top as the rows stand now; sorting and refilling change it.
class CReportList : public QTableView {
    Q_OBJECT

public:
    /// How a column sorts: by text as people read it, or by the number at the beginning of the caption. Columns of
    /// numbers stand right-aligned.
    enum ColumnKind { Text, Number };

    /// A small picture at the right end of a cell.
    struct CellIcon {
        int number = 0; ///< in the program's icon table
        QString tip;
        bool takes_clicks = false; ///< a click is a cell_icon_clicked and leaves the selection alone
    };
    /// Where rows that are dragged would come to lie, as seen from the row under the mouse.
    enum class DropPlace { Above, Below };

    explicit CReportList(QWidget* parent = nullptr);
    ~CReportList() override;

    virtual QString get_item_caption(void* item, int column) const = 0;
    /// The index into the icon list of the icon before the first column; one outside the list shows none.
    virtual int get_item_icon(void* item) const;
    /// From left to right; none at first.
    virtual std::vector<CellIcon> cell_icons(void* item, int column) const;
    /// Whether the selected rows, which are being dragged, can be dropped beside this object.
    virtual bool accepts_drop_at(void* item) const;
    /// Draws onto a cell after its caption. The painter's state is restored afterwards.
    virtual void draw_additional(QPainter& painter, const QRect& cell, int row, int column) const;
    /// Whether a click into this column selects its row. Clicks into a column that does not (one that toggles
    /// something, say) leave the selection alone; each of them is an item_clicked, also the second of two quick ones.
    virtual bool selects_on_click(int column) const;

    /// Inserts a column before `index` (held to 0 .. number of columns). `width_share`, at least 1, is its share of
    /// the list's width relative to the other columns, kept until the user drags a header.
    void insert_column(int index, const QString& title, int width_share = 1, ColumnKind kind = Text);
    /// Renames a column; does nothing for a column that there is not.
    void set_column_title(int column, const QString& title);
    QStringList column_captions() const;
    /// The widths that the user gave the columns, pixels; empty while they have their shares.
    QList<int> chosen_widths() const;
    /// Widths that the user gave them earlier; any other number of widths than of columns gives them their shares again.
    void set_chosen_widths(const QList<int>& widths);
    bool is_number_column(int column) const;

    /// Shows these objects in the given order, or sorted as the header says when a column was sorted before. Objects
    /// that were selected and are still there stay selected; the list stays scrolled as it was. The same objects in the
    /// same order as last time stay where they are, whatever their captions are now; then the answer is false.
    bool refill_list(const std::vector<void*>& items);
    int row_count() const;
    /// Null when there is no such row.
    void* get_binded_ptr(int row) const;
    /// Empty when there is no such cell.
    QString item_caption(int row, int column) const;
    /// What get_item_icon() says for the row; -1 when there is no such row or no icon list.
    int icon_index(int row) const;
    /// Shows all captions anew; the rows stay where they are.
    void refresh_all_item_caption();
    /// Lets the user edit the caption of a cell in place, at most `longest` characters of it; caption_edited() tells when
    /// that was done. Nothing happens for a cell that there is not.
    void edit_caption(int row, int column, int longest);
    int longest_edit() const { return m_longest_edit; } ///< characters, of the caption that is being edited

    /// Selects the row bound to this object, and only it, and scrolls to it when it was not selected before. Null,
    /// or an object that is not in the list, clears the selection.
    void selecte_item_by_ptr_binded(void* item);
    /// Selects the rows of these objects; those not in the list are skipped. While only single selection is allowed,
    /// the last one that is in the list is selected.
    void selecte_items_by_ptr_binded(const std::vector<void*>& items, bool clear_first = true);
    /// The lowest and the highest selected row, -1 without a selection.
    int get_first_sel_index() const;
    int get_last_sel_index() const;
    /// The objects of the selected rows from top to bottom.
    std::vector<void*> selected_items() const;
    /// Whether several rows can be selected, with Shift and Ctrl. Off at first; switching it off keeps the topmost.
    void set_multi_selection(bool multi);

    /// Whether rows can be dragged with the left button; off at first.
    void set_rows_draggable(bool draggable) { m_rows_draggable = draggable; }
    /// The icons of a cell and where they are in the viewport; empty when there is no such cell.
    std::vector<CellIcon> cell_icons_at(int row, int column) const;
    QRect cell_icon_rect(int row, int column, int icon) const;
    const QIcon& icon_of(const CellIcon& icon) const;

    /// The cell of the click that is being handled, or was last; row and column are -1 beside all rows.
    void get_item_index_under_mouse(int& row, int& column) const;

    /// Sorts the rows by a column's captions; later refills are sorted alike, but changes of captions alone move no
    /// row. Stable. Does nothing for a column that there is not.
    void sort_by_column(int column, bool ascending);
    /// By the same column as last time, after captions changed; nothing while the rows stand as they were given.
    void sort_again();
    /// The column that the rows are sorted by, -1 while they stand as they were given.
    int sort_column() const;

    /// Whether typing letters goes to the next row whose first column begins with them. On at first.
    void set_use_match_info(bool use);
    /// The icons that get_item_icon() chooses from, by their numbers in the program's icon table.
    void set_icon_list(const QList<int>& icon_numbers);
    /// A grey text shown while the list has no rows.
    void set_empty_hint(const QString& hint);

    bool has_icons() const { return !m_icons.isEmpty(); }
    /// A null icon when the row shows none.
    QIcon row_icon(int row) const;
    /// The row under the mouse, -1 for none.
    int hovered_row() const { return m_hovered_row; }

    void keyboardSearch(const QString& text) override;
    void reset() override;

Q_SIGNALS:
    // All of them are caused by the user only, never by calls.

    /// A click with the left button. -1, -1 beside all rows, where the selection has been cleared before.
    void item_clicked(int row, int column);
    /// The right button or the menu key; the right button has selected the row under it, unless it was selected. -1 beside
    /// all rows; `place` is one of the desktop.
    void menu_requested(int row, const QPoint& place);
    /// A double-click, or Return or Enter on the current row while it is selected. While nobody listens, these keys are
    /// left to the window.
    void item_double_clicked(int row, int column);
    void selection_changed_by_user();
    void cell_icon_clicked(int row, int column, int icon);
    /// The selected rows follow the mouse from here on.
    void drag_started();
    /// The selected rows were dropped beside a row that accepts them.
    void rows_dropped(int row, CReportList::DropPlace place);
    /// The Delete key. While nobody listens, the key is left to the window's shortcuts.
    void delete_pressed();
    /// F2 while a row is selected.
    void rename_pressed();
    /// What edit_caption() began ended with another text; not when the user gave it up.
    void caption_edited(int row, int column, const QString& text);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    struct Cell {
        int row = -1;
        int column = -1;
        bool operator==(const Cell&) const = default;
    };
    struct Drop {
        int row;
        DropPlace place;
    };
    class CodeScope;

    void set_up_headers();
    void on_header_clicked(int column);
    void on_section_resized();
    void apply_width_shares();
    void update_header_height();
    void update_row_height();
    void reload_icons();
    Cell cell_at(const QPoint& pos) const;
    int taking_icon_at(const QPoint& pos) const;
    bool begins_drag(const QMouseEvent& event) const;
    std::optional<Drop> drop_at(const QPoint& pos) const;
    void drag_to(const QPoint& pos);
    void end_drag(bool dropped);
    void paint_drop(QPainter& painter) const;
    void set_hovered_row(int row);
    void update_row(int row);
    std::vector<int> selected_rows() const;
    void replace_selection(const std::vector<int>& sorted_rows, int current_row);
    std::vector<int> sorted_order(const std::vector<void*>& items, int column, bool ascending) const;
    std::vector<void*> sorted_as_before(const std::vector<void*>& items) const;
    void select_for_menu(int row);
    bool hears_delete() const;
    bool open_current_row();

    tarn::ReportModel* m_model;
    std::vector<void*> m_filled; ///< the rows as they were given
    QList<int> m_icon_numbers;
    QList<QIcon> m_icons;
    mutable QHash<int, QIcon> m_cell_icons; ///< those that were asked for, by their numbers
    QString m_empty_hint;
    QString m_typed;
    qint64 m_typed_at = 0;
    Cell m_pressed;
    Cell m_clicked;
    int m_longest_edit = 0;
    int m_hovered_row = -1;
    int m_code_depth = 0;
    bool m_press_is_ours = false;
    bool m_was_double_click = false;
    int m_pressed_icon = -1; ///< of the pressed cell, one that takes clicks
    QPoint m_pressed_at;     ///< in the viewport
    bool m_rows_draggable = false;
    bool m_may_drag = false; ///< the left button is held on a row that can be dragged
    bool m_is_dragging = false;
    bool m_selects_on_release = false; ///< of several rows the one that was pressed, unless it is dragged
    std::optional<Drop> m_drop;
    bool m_keeps_shares = true;
    bool m_use_match_info = true;
};
