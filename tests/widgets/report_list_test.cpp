#include "widgets/report_list.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <deque>
#include <random>

namespace {

struct Thing {
    QString name;
    int number = 0;
    int icon = -1;
};

class ThingList : public CReportList {
public:
    ThingList()
    {
        insert_column(0, QStringLiteral("Name"), 2);
        insert_column(1, QStringLiteral("Number"), 1, Number);
        insert_column(2, QStringLiteral("Shown"), 1);
        resize(300, 240);
    }

    QString get_item_caption(void* item, int column) const override
    {
        ++captions_asked;
        const auto* thing = static_cast<Thing*>(item);
        return column == 0 ? thing->name : column == 1 ? QString::number(thing->number) : QString();
    }
    int get_item_icon(void* item) const override { return static_cast<Thing*>(item)->icon; }
    bool selects_on_click(int column) const override { return column != 2; }
    void draw_additional(QPainter& painter, const QRect& cell, int row, int column) const override
    {
        if (row == 0 && column == 2)
            painter.fillRect(cell, Qt::green);
    }

    mutable int captions_asked = 0;
};

class ReportListTest : public testing::Test {
protected:
    std::vector<void*> make(const QStringList& names)
    {
        std::vector<void*> made;
        for (const QString& name : names) {
            things.push_back({name, int(things.size())});
            made.push_back(&things.back());
        }
        return made;
    }

    void show(const QStringList& names)
    {
        items = make(names);
        list.refill_list(items);
        list.show();
        QApplication::processEvents();
    }

    QPoint cell(int row, int column) const { return list.visualRect(list.model()->index(row, column)).center(); }

    void click(int row, int column, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, cell(row, column));
    }

    void click_beside_rows() { QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(20, 180)); }

    void click_header(int column)
    {
        const QHeaderView* header = list.horizontalHeader();
        const QPoint pos(header->sectionViewportPosition(column) + 12, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, pos);
    }

    QString order() const
    {
        QString names;
        for (int row = 0; row < list.row_count(); ++row)
            names += list.item_caption(row, 0);
        return names;
    }

    QString selection() const
    {
        QString names;
        for (void* item : list.selected_items())
            names += static_cast<Thing*>(item)->name;
        return names;
    }

    QStringList letters(const char* text) const
    {
        QStringList names;
        for (const char* c = text; *c; ++c)
            names.append(QString(QLatin1Char(*c)));
        return names;
    }

    std::deque<Thing> things;
    std::vector<void*> items;
    ThingList list;
    QSignalSpy clicks{&list, &CReportList::item_clicked};
    QSignalSpy double_clicks{&list, &CReportList::item_double_clicked};
    QSignalSpy changes{&list, &CReportList::selection_changed_by_user};
};

} // namespace

TEST_F(ReportListTest, RefillKeepsTheSelectionOfSurvivorsAndReportsNothing)
{
    list.set_multi_selection(true);
    show(letters("abcde"));
    list.selecte_items_by_ptr_binded({items[1], items[2], items[4]});
    list.refill_list({items[4], items[0], items[2]});
    EXPECT_EQ(selection(), QStringLiteral("ec"));
    EXPECT_EQ(list.get_first_sel_index(), 0);
    EXPECT_EQ(list.get_last_sel_index(), 2);
    list.refill_list({});
    EXPECT_EQ(list.get_first_sel_index(), -1);
    EXPECT_EQ(list.get_last_sel_index(), -1);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ReportListTest, RefillKeepsTheScrollPositionAndTheSorting)
{
    QStringList names;
    for (int i = 0; i < 500; ++i)
        names.append(QString::number(i));
    show(names);
    list.sort_by_column(1, false);
    list.verticalScrollBar()->setValue(3000);
    list.selecte_item_by_ptr_binded(items[350]); // Where the list is scrolled to.
    items.pop_back();
    list.refill_list(items);
    QApplication::processEvents();
    EXPECT_EQ(list.verticalScrollBar()->value(), 3000);
    EXPECT_EQ(list.sort_column(), 1);
    EXPECT_EQ(list.get_binded_ptr(0), items.back());
    EXPECT_EQ(selection(), QStringLiteral("350"));

    list.captions_asked = 0;
    list.refill_list(items);
    EXPECT_EQ(list.captions_asked, 0) << "the same rows are not sorted again";
    list.refill_list({});
    list.refill_list({items[2], items[7]});
    EXPECT_EQ(order(), QStringLiteral("72"));
}

TEST_F(ReportListTest, EnterOpensTheCurrentRow)
{
    show(letters("abc"));
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(double_clicks.count(), 0) << "no row is current";
    click(1, 1);
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Return);
    QTest::keyClick(&list, Qt::Key_Enter, Qt::KeypadModifier);
    ASSERT_EQ(double_clicks.count(), 2);
    EXPECT_EQ(double_clicks.at(1).at(0).toInt(), 2);
    click_beside_rows();
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(double_clicks.count(), 2);
}

TEST_F(ReportListTest, CaptionsAreAskedOnlyOfRowsThatAreSeen)
{
    show(QStringList(100000, QStringLiteral("x")));
    list.captions_asked = 0;
    items.pop_back();
    list.refill_list(items);
    list.refresh_all_item_caption();
    QApplication::processEvents();
    EXPECT_GT(list.captions_asked, 0);
    EXPECT_LT(list.captions_asked, 500);
}

TEST_F(ReportListTest, SelectingAnUnknownObjectClears)
{
    show(letters("abc"));
    list.selecte_item_by_ptr_binded(items[1]);
    EXPECT_EQ(selection(), QStringLiteral("b"));
    Thing stranger;
    list.selecte_item_by_ptr_binded(&stranger);
    EXPECT_EQ(selection(), QString());
    list.selecte_item_by_ptr_binded(items[1]);
    list.selecte_item_by_ptr_binded(nullptr);
    EXPECT_EQ(selection(), QString());

    list.selecte_items_by_ptr_binded({items[0], items[2], &stranger});
    EXPECT_EQ(selection(), QStringLiteral("c")) << "single selection takes the last one there is";
    list.selecte_items_by_ptr_binded({&stranger}, false);
    EXPECT_EQ(selection(), QStringLiteral("c"));
    list.set_multi_selection(true);
    list.selecte_items_by_ptr_binded({items[0]}, false);
    EXPECT_EQ(selection(), QStringLiteral("ac"));
    list.set_multi_selection(false);
    EXPECT_EQ(selection(), QStringLiteral("a"));
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(list.get_binded_ptr(-1), nullptr);
    EXPECT_EQ(list.get_binded_ptr(3), nullptr);
}

TEST_F(ReportListTest, ClicksTellTheirCellAndClicksBesideAllRowsClear)
{
    show(letters("abc"));
    std::vector<std::pair<int, int>> seen;
    QObject::connect(&list, &CReportList::item_clicked, [&](int row, int column) {
        int under_row = 9;
        int under_column = 9;
        list.get_item_index_under_mouse(under_row, under_column);
        EXPECT_EQ(under_row, row);
        EXPECT_EQ(under_column, column);
        seen.emplace_back(row, list.get_first_sel_index());
    });
    click(1, 1);
    click_beside_rows();
    click_beside_rows();
    EXPECT_EQ(seen, (std::vector<std::pair<int, int>>{{1, 1}, {-1, -1}, {-1, -1}}));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(clicks.at(1).at(1).toInt(), -1);

    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, cell(2, 0));
    ASSERT_EQ(double_clicks.count(), 1);
    EXPECT_EQ(double_clicks.at(0).at(0).toInt(), 2);
}

TEST_F(ReportListTest, ColumnsThatDoNotSelectLeaveTheSelectionAlone)
{
    list.set_multi_selection(true);
    show(letters("abc"));
    click(0, 0);
    click(1, 0, Qt::ControlModifier);
    EXPECT_EQ(selection(), QStringLiteral("ab"));
    changes.clear();
    clicks.clear();
    click(2, 2);
    EXPECT_EQ(selection(), QStringLiteral("ab"));
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(clicks.count(), 1);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, cell(2, 2));
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, cell(2, 2));
    EXPECT_EQ(double_clicks.count(), 0);
    EXPECT_EQ(clicks.count(), 2) << "each of two quick clicks toggles";
    EXPECT_EQ(selection(), QStringLiteral("ab"));
    click(2, 1);
    EXPECT_EQ(selection(), QStringLiteral("c"));
}

TEST_F(ReportListTest, AHandlerMayRefillTheListWhileItIsClicked)
{
    show(letters("abc"));
    QObject::connect(&list, &CReportList::selection_changed_by_user, [&] { list.refill_list({items[0]}); });
    click(2, 0);
    EXPECT_EQ(order(), QStringLiteral("a"));
    int row = 9;
    int column = 9;
    list.get_item_index_under_mouse(row, column);
    EXPECT_LT(row, list.row_count());
}

TEST_F(ReportListTest, SortingIsStableMovesRowsAndKeepsTheSelection)
{
    list.set_multi_selection(true);
    show(letters("abcdef"));
    const int numbers[] = {10, 9, 100, 9, 10, 9};
    for (size_t i = 0; i < things.size(); ++i)
        things[i].number = numbers[i];
    list.selecte_items_by_ptr_binded({items[1], items[4]});
    list.sort_by_column(1, true);
    EXPECT_EQ(order(), QStringLiteral("bdfaec"));
    EXPECT_EQ(selection(), QStringLiteral("be"));
    EXPECT_EQ(list.get_binded_ptr(3), items[0]);
    list.sort_by_column(1, false);
    EXPECT_EQ(order(), QStringLiteral("caebdf"));
    list.sort_by_column(7, true);
    list.sort_by_column(-1, true);
    EXPECT_EQ(order(), QStringLiteral("caebdf"));
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ReportListTest, HeaderClicksSortAndTurnTheDirection)
{
    show({QStringLiteral("b"), QStringLiteral("C"), QStringLiteral("a")});
    click_header(0);
    EXPECT_EQ(order(), QStringLiteral("abC"));
    EXPECT_EQ(list.horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
    click_header(0);
    EXPECT_EQ(order(), QStringLiteral("Cba"));
    click_header(1);
    EXPECT_EQ(order(), QStringLiteral("bCa"));
    EXPECT_EQ(list.horizontalHeader()->sortIndicatorSection(), 1);
    EXPECT_EQ(list.horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(ReportListTest, AHundredThousandRowsStayRightAfterSorting)
{
    list.set_multi_selection(true);
    QStringList names;
    std::mt19937 random(3);
    for (int i = 0; i < 100000; ++i)
        names.append(QStringLiteral("Item %1").arg(random() % 50000, 5, 10, QLatin1Char('0')));
    show(names);
    std::vector<void*> every_second;
    for (size_t i = 0; i < items.size(); i += 2)
        every_second.push_back(items[i]);
    list.selecte_items_by_ptr_binded(every_second);
    list.sort_by_column(0, true);
    for (int row = 1; row < list.row_count(); ++row) {
        const auto* before = static_cast<Thing*>(list.get_binded_ptr(row - 1));
        const auto* after = static_cast<Thing*>(list.get_binded_ptr(row));
        ASSERT_TRUE(before->name < after->name || (before->name == after->name && before->number < after->number));
    }
    auto chosen = list.selected_items();
    std::sort(chosen.begin(), chosen.end());
    std::sort(every_second.begin(), every_second.end());
    EXPECT_EQ(chosen, every_second);
}

TEST_F(ReportListTest, ColumnsKeepTheirSharesUntilAHeaderIsDragged)
{
    show(letters("abc"));
    EXPECT_EQ(list.columnWidth(0) + list.columnWidth(1) + list.columnWidth(2), list.viewport()->width());
    list.resize(600, 240);
    QApplication::processEvents();
    EXPECT_NEAR(list.columnWidth(0), list.viewport()->width() / 2, 1);
    list.horizontalHeader()->resizeSection(0, 90);
    list.resize(400, 240);
    QApplication::processEvents();
    EXPECT_EQ(list.columnWidth(0), 90);
    EXPECT_EQ(list.column_captions().join(u','), QStringLiteral("Name,Number,Shown"));
}

TEST_F(ReportListTest, TheHeaderHasTwoLinesWhileACaptionIsTooLongForItsColumn)
{
    show(letters("ab"));
    list.resize(900, 200);
    const int one_line = list.horizontalHeader()->height();
    list.set_column_title(1, QStringLiteral("Belongs to dialog"));
    EXPECT_EQ(list.horizontalHeader()->height(), one_line);
    list.resize(160, 200);
    EXPECT_GT(list.horizontalHeader()->height(), one_line);
    list.setColumnWidth(0, 200); // As drags do it.
    list.setColumnWidth(1, 200);
    list.setColumnWidth(2, 200);
    EXPECT_EQ(list.horizontalHeader()->height(), one_line);
}

TEST_F(ReportListTest, TypingLettersGoesToTheNextMatch)
{
    show({QStringLiteral("beta"), QStringLiteral("alpha"), QStringLiteral("Bravo"), QStringLiteral("gamma")});
    list.setFocus();
    const int interval = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(100000);
    QTest::keyClicks(&list, QStringLiteral("br"));
    EXPECT_EQ(selection(), QStringLiteral("Bravo"));
    QApplication::setKeyboardInputInterval(1);
    QTest::qWait(5);
    QTest::keyClicks(&list, QStringLiteral("b"));
    EXPECT_EQ(selection(), QStringLiteral("beta")) << "goes on from the top";
    list.set_use_match_info(false);
    QTest::keyClicks(&list, QStringLiteral("g"));
    EXPECT_EQ(selection(), QStringLiteral("beta"));
    QApplication::setKeyboardInputInterval(interval);
    QTest::keyClick(&list, Qt::Key_End);
    EXPECT_EQ(selection(), QStringLiteral("gamma"));

    QSignalSpy deletes(&list, &CReportList::delete_pressed);
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(deletes.count(), 1);
}

TEST_F(ReportListTest, IconsOutsideTheIconListAreNotShown)
{
    show(letters("abc"));
    things[0].icon = 0;
    things[1].icon = 1;
    things[2].icon = -5;
    EXPECT_EQ(list.icon_index(0), -1) << "no icon list yet";
    list.set_icon_list({1});
    EXPECT_EQ(list.icon_index(0), 0);
    EXPECT_FALSE(list.row_icon(0).isNull());
    EXPECT_EQ(list.icon_index(1), 1);
    EXPECT_TRUE(list.row_icon(1).isNull());
    EXPECT_TRUE(list.row_icon(2).isNull());
    EXPECT_EQ(list.icon_index(99), -1);
}

TEST_F(ReportListTest, DrawsAdditionsOnTopAndAHintWhenEmpty)
{
    show(letters("ab"));
    EXPECT_EQ(list.viewport()->grab().toImage().pixelColor(cell(0, 2)), QColor(Qt::green));
    list.refill_list({});
    const QImage blank = list.viewport()->grab().toImage();
    list.set_empty_hint(QStringLiteral("Nothing here"));
    EXPECT_NE(list.viewport()->grab().toImage(), blank);
}
