#include "widgets/report_list.h"

#include "widgets/iconfun.h"
#include "widgets/report_delegate.h"
#include "widgets/report_model.h"
#include "widgets/report_sort.h"

#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>
#include <unordered_set>

namespace {

constexpr int widest_column = 4000; ///< pixels

} // namespace

// While one lives, changes come from the program and are not reported as the user's.
class CReportList::CodeScope {
public:
    explicit CodeScope(CReportList& list) : m_list(list) { ++m_list.m_code_depth; }
    ~CodeScope() { --m_list.m_code_depth; }
    CodeScope(const CodeScope&) = delete;
    CodeScope& operator=(const CodeScope&) = delete;

private:
    CReportList& m_list;
};

CReportList::CReportList(QWidget* parent) : QTableView(parent), m_model(new tarn::ReportModel(this))
{
    const CodeScope scope(*this);
    setModel(m_model);
    setItemDelegate(new tarn::ReportDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAttribute(Qt::WA_Hover);
    set_up_headers();
}

CReportList::~CReportList() = default;

int CReportList::get_item_icon(void*) const
{
    return -1;
}

std::vector<CReportList::CellIcon> CReportList::cell_icons(void*, int) const
{
    return {};
}

bool CReportList::accepts_drop_at(void*) const
{
    return false;
}

void CReportList::draw_additional(QPainter&, const QRect&, int, int) const {}

bool CReportList::selects_on_click(int) const
{
    return true;
}

void CReportList::set_up_headers()
{
    // Rows of one fixed height: nothing ever asks all rows how tall they are.
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    update_row_height();

    QHeaderView* header = horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setMinimumSectionSize(16);
    header->setHighlightSections(false);
    header->setTextElideMode(Qt::ElideRight);
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    connect(header, &QHeaderView::sectionClicked, this, &CReportList::on_header_clicked);
    connect(header, &QHeaderView::sectionResized, this, &CReportList::on_section_resized);
}

void CReportList::update_row_height()
{
    verticalHeader()->setDefaultSectionSize(std::max(fontMetrics().height() + 4, 20));
    verticalScrollBar()->setSingleStep(verticalHeader()->defaultSectionSize());
}

void CReportList::insert_column(int index, const QString& title, int width_share, ColumnKind kind)
{
    const CodeScope scope(*this);
    m_model->insert_column(std::clamp(index, 0, m_model->columnCount()),
                           {title, std::max(width_share, 1), kind == Number});
    apply_width_shares();
}

void CReportList::set_column_title(int column, const QString& title)
{
    if (column >= 0 && column < m_model->columnCount())
        m_model->set_column_title(column, title);
    update_header_height();
}

QStringList CReportList::column_captions() const
{
    QStringList titles;
    for (const auto& column : m_model->columns())
        titles.append(column.title);
    return titles;
}

QList<int> CReportList::chosen_widths() const
{
    QList<int> widths;
    for (int i = 0; !m_keeps_shares && i < m_model->columnCount(); ++i)
        widths.append(columnWidth(i));
    return widths;
}

void CReportList::set_chosen_widths(const QList<int>& widths)
{
    m_keeps_shares = widths.isEmpty() || widths.size() != m_model->columnCount();
    setHorizontalScrollBarPolicy(m_keeps_shares ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    apply_width_shares();
    const CodeScope scope(*this);
    for (int i = 0; !m_keeps_shares && i < widths.size(); ++i)
        setColumnWidth(i, std::clamp(widths[i], horizontalHeader()->minimumSectionSize(), widest_column));
    update_header_height();
}

bool CReportList::is_number_column(int column) const
{
    return column >= 0 && column < m_model->columnCount() && m_model->columns()[size_t(column)].is_number;
}

void CReportList::apply_width_shares()
{
    if (!m_keeps_shares)
        return;
    const CodeScope scope(*this);
    int shares_left = 0;
    for (const auto& column : m_model->columns())
        shares_left += column.share;
    int width_left = viewport()->width();
    for (int i = 0; i < m_model->columnCount(); ++i) {
        const int share = m_model->columns()[size_t(i)].share;
        const int width = int(qint64(width_left) * share / shares_left);
        setColumnWidth(i, width);
        width_left -= width;
        shares_left -= share;
    }
    update_header_height();
}

// Captions that are too long for their columns go over two lines, where they can be broken.
void CReportList::update_header_height()
{
    QHeaderView* header = horizontalHeader();
    const QFontMetrics metrics = header->fontMetrics();
    const int margins = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
    int height = metrics.height();
    for (int i = 0; i < m_model->columnCount(); ++i) {
        const QRect room(0, 0, columnWidth(i) - margins, 2 * metrics.lineSpacing());
        const QRect text = metrics.boundingRect(room, Qt::TextWordWrap, m_model->columns()[size_t(i)].title);
        height = std::max(height, std::min(text.height(), room.height()));
    }
    header->setFixedHeight(height + margins);
}

void CReportList::on_section_resized()
{
    if (m_code_depth > 0)
        return;
    update_header_height();
    m_keeps_shares = false;
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

bool CReportList::refill_list(const std::vector<void*>& items)
{
    const CodeScope scope(*this);
    if (items == m_filled) {
        refresh_all_item_caption();
        return false;
    }
    m_filled = items;
    const std::vector<void*> chosen = selected_items();
    void* const current = get_binded_ptr(currentIndex().row());
    const int scrolled = verticalScrollBar()->value();

    m_model->set_items(sorted_as_before(items));

    const std::vector<void*>& shown = m_model->items();
    std::vector<int> rows;
    const std::unordered_set<void*> wanted(chosen.begin(), chosen.end());
    for (size_t i = 0; i < shown.size() && !wanted.empty(); ++i)
        if (wanted.contains(shown[i]))
            rows.push_back(int(i));
    const auto at = current ? std::find(shown.begin(), shown.end(), current) : shown.end();
    replace_selection(rows, at == shown.end() ? -1 : int(at - shown.begin()));

    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(scrolled);
    return true;
}

int CReportList::row_count() const
{
    return int(m_model->items().size());
}

void* CReportList::get_binded_ptr(int row) const
{
    return row >= 0 && row < row_count() ? m_model->items()[size_t(row)] : nullptr;
}

QString CReportList::item_caption(int row, int column) const
{
    if (row < 0 || row >= row_count() || column < 0 || column >= m_model->columnCount())
        return {};
    return get_item_caption(m_model->items()[size_t(row)], column);
}

int CReportList::icon_index(int row) const
{
    if (row < 0 || row >= row_count() || m_icons.isEmpty())
        return -1;
    return get_item_icon(m_model->items()[size_t(row)]);
}

std::vector<CReportList::CellIcon> CReportList::cell_icons_at(int row, int column) const
{
    return row >= 0 && row < row_count() ? cell_icons(m_model->items()[size_t(row)], column) : std::vector<CellIcon>();
}

QRect CReportList::cell_icon_rect(int row, int column, int icon) const
{
    const auto count = int(cell_icons_at(row, column).size());
    return icon >= 0 && icon < count
        ? tarn::ReportDelegate::cell_icon_rect(visualRect(m_model->index(row, column)), icon, count)
        : QRect();
}

const QIcon& CReportList::icon_of(const CellIcon& icon) const
{
    QIcon& known = m_cell_icons[icon.number];
    if (known.isNull())
        known = iconfun::icon(icon.number);
    return known;
}

QIcon CReportList::row_icon(int row) const
{
    return m_icons.value(icon_index(row));
}

void CReportList::set_icon_list(const QList<int>& icon_numbers)
{
    m_icon_numbers = icon_numbers;
    reload_icons();
}

void CReportList::reload_icons()
{
    m_icons.clear();
    m_cell_icons.clear();
    for (const int number : m_icon_numbers)
        m_icons.append(iconfun::icon(number));
    viewport()->update();
}

void CReportList::refresh_all_item_caption()
{
    viewport()->update();
}

void CReportList::edit_caption(int row, int column, int longest)
{
    const QModelIndex cell = m_model->index(row, column);
    if (!cell.isValid())
        return;
    m_longest_edit = longest;
    scrollTo(cell);
    m_model->set_editable(cell);
    edit(cell);
}

void CReportList::update_row(int row)
{
    if (row >= 0 && row < row_count())
        viewport()->update(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
}

void CReportList::selecte_item_by_ptr_binded(void* item)
{
    const std::vector<void*>& items = m_model->items();
    const auto at = item ? std::find(items.begin(), items.end(), item) : items.end();
    if (at == items.end()) {
        const CodeScope scope(*this);
        clearSelection();
        return;
    }
    const int row = int(at - items.begin());
    if (selected_rows() == std::vector<int>{row} && currentIndex().row() == row)
        return;
    const CodeScope scope(*this);
    replace_selection({row}, row);
    scrollTo(m_model->index(row, 0));
}

void CReportList::selecte_items_by_ptr_binded(const std::vector<void*>& items, bool clear_first)
{
    const std::unordered_set<void*> present(m_model->items().begin(), m_model->items().end());
    if (selectionMode() == SingleSelection) {
        const auto last = std::find_if(items.rbegin(), items.rend(),
                                       [&](void* item) { return present.contains(item); });
        if (last != items.rend() || clear_first)
            selecte_item_by_ptr_binded(last == items.rend() ? nullptr : *last);
        return;
    }
    std::unordered_set<void*> wanted(items.begin(), items.end());
    if (!clear_first)
        for (void* item : selected_items())
            wanted.insert(item);
    std::vector<int> rows;
    for (int row = 0; row < row_count(); ++row)
        if (wanted.contains(get_binded_ptr(row)))
            rows.push_back(row);
    if (rows == selected_rows())
        return;
    const CodeScope scope(*this);
    replace_selection(rows, rows.empty() ? -1 : rows.front());
    if (!rows.empty())
        scrollTo(m_model->index(rows.front(), 0));
}

// The selection model compares every old range with every new one; starting from nothing keeps that linear.
void CReportList::replace_selection(const std::vector<int>& sorted_rows, int current_row)
{
    selectionModel()->reset();
    viewport()->update();
    if (m_model->columnCount() == 0)
        return;
    QItemSelection selection;
    const int last_column = m_model->columnCount() - 1;
    for (size_t i = 0; i < sorted_rows.size();) {
        size_t end = i + 1;
        while (end < sorted_rows.size() && sorted_rows[end] == sorted_rows[end - 1] + 1)
            ++end;
        selection.append(
            QItemSelectionRange(m_model->index(sorted_rows[i], 0), m_model->index(sorted_rows[end - 1], last_column)));
        i = end;
    }
    if (!selection.isEmpty())
        selectionModel()->select(selection, QItemSelectionModel::Select);
    if (current_row >= 0)
        selectionModel()->setCurrentIndex(m_model->index(current_row, 0), QItemSelectionModel::NoUpdate);
}

std::vector<int> CReportList::selected_rows() const
{
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

int CReportList::get_first_sel_index() const
{
    const std::vector<int> rows = selected_rows();
    return rows.empty() ? -1 : rows.front();
}

int CReportList::get_last_sel_index() const
{
    const std::vector<int> rows = selected_rows();
    return rows.empty() ? -1 : rows.back();
}

std::vector<void*> CReportList::selected_items() const
{
    std::vector<void*> items;
    for (const int row : selected_rows())
        items.push_back(get_binded_ptr(row));
    return items;
}

void CReportList::set_multi_selection(bool multi)
{
    setSelectionMode(multi ? ExtendedSelection : SingleSelection);
    const int first = get_first_sel_index();
    if (!multi && first != get_last_sel_index()) {
        const CodeScope scope(*this);
        replace_selection({first}, first);
    }
}

int CReportList::sort_column() const
{
    return horizontalHeader()->sortIndicatorSection();
}

std::vector<int> CReportList::sorted_order(const std::vector<void*>& items, int column, bool ascending) const
{
    std::vector<QString> captions;
    captions.reserve(items.size());
    for (void* item : items)
        captions.push_back(get_item_caption(item, column));
    return is_number_column(column) ? tarn::number_order(captions, ascending)
                                    : tarn::TextOrder::shared().sorted(captions, ascending);
}

std::vector<void*> CReportList::sorted_as_before(const std::vector<void*>& items) const
{
    if (sort_column() < 0)
        return items;
    const bool ascending = horizontalHeader()->sortIndicatorOrder() == Qt::AscendingOrder;
    std::vector<void*> sorted;
    sorted.reserve(items.size());
    for (const int row : sorted_order(items, sort_column(), ascending))
        sorted.push_back(items[size_t(row)]);
    return sorted;
}

void CReportList::sort_by_column(int column, bool ascending)
{
    if (column < 0 || column >= m_model->columnCount())
        return;
    const CodeScope scope(*this);
    const std::vector<int> order = sorted_order(m_model->items(), column, ascending);

    std::vector<bool> was_selected(order.size(), false);
    for (const int row : selected_rows())
        was_selected[size_t(row)] = true;
    const int current = currentIndex().row();
    selectionModel()->reset();
    m_model->reorder(order);

    std::vector<int> rows;
    int new_current = -1;
    for (size_t i = 0; i < order.size(); ++i) {
        if (was_selected[size_t(order[i])])
            rows.push_back(int(i));
        if (order[i] == current)
            new_current = int(i);
    }
    replace_selection(rows, new_current);
    horizontalHeader()->setSortIndicator(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void CReportList::sort_again()
{
    sort_by_column(sort_column(), horizontalHeader()->sortIndicatorOrder() == Qt::AscendingOrder);
}

void CReportList::set_use_match_info(bool use)
{
    m_use_match_info = use;
}

void CReportList::set_empty_hint(const QString& hint)
{
    m_empty_hint = hint;
    viewport()->update();
}
