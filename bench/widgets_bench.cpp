// Lists of the widget library beside Qt's table with items and a plain item model in a plain view.

#include "widgets/report_list.h"

#include <benchmark/benchmark.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <QTableWidget>

#include <algorithm>
#include <random>

namespace {

constexpr int column_count = 3;

struct Thing {
    QString name;
    QString type;
    int number = 0;

    QString text(int column) const { return column == 0 ? name : column == 1 ? type : QString::number(number); }
};

std::vector<Thing> make_things(int count)
{
    const QString types[] = {QStringLiteral("Button"), QStringLiteral("Slider"), QStringLiteral("Check box")};
    const QString words[] = {QStringLiteral("left"),  QStringLiteral("Title"), QStringLiteral("ok"),
                             QStringLiteral("Panel"), QStringLiteral("speed"), QStringLiteral("Name")};
    std::mt19937 random(1);
    std::vector<Thing> things;
    for (int i = 0; i < count; ++i)
        things.push_back({words[random() % 6] + QString::number(random() % 1000000), types[random() % 3], i});
    return things;
}

class ThingList : public CReportList {
public:
    ThingList()
    {
        insert_column(0, QStringLiteral("Name"));
        insert_column(1, QStringLiteral("Type"));
        insert_column(2, QStringLiteral("Number"), 1, Number);
    }
    QString get_item_caption(void* item, int column) const override { return static_cast<Thing*>(item)->text(column); }
};

class PlainModel : public QAbstractTableModel {
public:
    std::vector<Thing*> rows;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : int(rows.size()); }
    int columnCount(const QModelIndex& = {}) const override { return column_count; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        return role == Qt::DisplayRole ? rows[size_t(index.row())]->text(index.column()) : QVariant();
    }
    void refill(const std::vector<Thing*>& things)
    {
        beginResetModel();
        rows = things;
        endResetModel();
    }
    void sort(int column, Qt::SortOrder order) override
    {
        Q_EMIT layoutAboutToBeChanged();
        std::stable_sort(rows.begin(), rows.end(), [&](const Thing* a, const Thing* b) {
            return order == Qt::AscendingOrder ? a->text(column) < b->text(column) : b->text(column) < a->text(column);
        });
        Q_EMIT layoutChanged();
    }
};

// Two fills that differ, so that none can be skipped for being the same.
template <class Pointer>
struct TwoFills {
    explicit TwoFills(std::vector<Thing>& things)
    {
        for (Thing& thing : things)
            first.push_back(&thing);
        second.assign(first.rbegin(), first.rend());
    }
    const std::vector<Pointer>& next()
    {
        turn = !turn;
        return turn ? first : second;
    }
    std::vector<Pointer> first, second;
    bool turn = false;
};

void open(QWidget& view)
{
    view.resize(600, 800);
    view.show();
    QApplication::processEvents();
}

void paint(QAbstractScrollArea& view)
{
    QApplication::processEvents();
    view.viewport()->repaint();
}

void fill(QTableWidget& table, const std::vector<Thing*>& things)
{
    table.clearContents();
    table.setRowCount(int(things.size()));
    for (int row = 0; row < int(things.size()); ++row)
        for (int column = 0; column < column_count; ++column)
            table.setItem(row, column, new QTableWidgetItem(things[size_t(row)]->text(column)));
}

void report_list_refill(benchmark::State& state)
{
    std::vector<Thing> things = make_things(int(state.range(0)));
    TwoFills<void*> fills(things);
    ThingList list;
    open(list);
    for (auto _ : state) {
        list.refill_list(fills.next());
        paint(list);
    }
}

void table_widget_refill(benchmark::State& state)
{
    std::vector<Thing> things = make_things(int(state.range(0)));
    TwoFills<Thing*> fills(things);
    QTableWidget table(0, column_count);
    open(table);
    for (auto _ : state) {
        fill(table, fills.next());
        paint(table);
    }
}

void plain_model_refill(benchmark::State& state)
{
    std::vector<Thing> things = make_things(int(state.range(0)));
    TwoFills<Thing*> fills(things);
    PlainModel model;
    QTableView view;
    view.setModel(&model);
    open(view);
    for (auto _ : state) {
        model.refill(fills.next());
        paint(view);
    }
}

void report_list_sort(benchmark::State& state)
{
    std::vector<Thing> things = make_things(int(state.range(0)));
    TwoFills<void*> fills(things);
    ThingList list;
    open(list);
    for (auto _ : state) {
        state.PauseTiming();
        list.refill_list(fills.first);
        paint(list);
        state.ResumeTiming();
        list.sort_by_column(0, true);
        paint(list);
    }
}

void table_widget_sort(benchmark::State& state)
{
    std::vector<Thing> things = make_things(int(state.range(0)));
    TwoFills<Thing*> fills(things);
    QTableWidget table(0, column_count);
    open(table);
    for (auto _ : state) {
        state.PauseTiming();
        fill(table, fills.first);
        paint(table);
        state.ResumeTiming();
        table.sortItems(0);
        paint(table);
    }
}

void plain_model_sort(benchmark::State& state)
{
    std::vector<Thing> things = make_things(int(state.range(0)));
    TwoFills<Thing*> fills(things);
    PlainModel model;
    QTableView view;
    view.setModel(&model);
    open(view);
    for (auto _ : state) {
        state.PauseTiming();
        model.refill(fills.first);
        paint(view);
        state.ResumeTiming();
        model.sort(0, Qt::AscendingOrder);
        paint(view);
    }
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(report_list_refill)->Name("refill_paint/tarn")->Apply(sizes);
BENCHMARK(table_widget_refill)->Name("refill_paint/QTableWidget")->Apply(sizes);
BENCHMARK(plain_model_refill)->Name("refill_paint/plain_model")->Apply(sizes);
BENCHMARK(report_list_sort)->Name("sort_text/tarn")->Apply(sizes);
BENCHMARK(table_widget_sort)->Name("sort_text/QTableWidget")->Apply(sizes);
BENCHMARK(plain_model_sort)->Name("sort_text/plain_model")->Apply(sizes);

} // namespace
