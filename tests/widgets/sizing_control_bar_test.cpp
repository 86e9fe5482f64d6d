#include "widgets/sizing_control_bar.h"

#include <QApplication>
#include <QMainWindow>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

struct Window : QMainWindow {
    Window()
    {
        setCentralWidget(new QWidget);
        bar->setWidget(new QWidget);
        resize(900, 700);
    }
    CSizingControlBar* bar = new CSizingControlBar(QStringLiteral("Bar"), this);
};

} // namespace

TEST(SizingControlBar, takes_its_stored_size_where_it_is_docked)
{
    Window window;
    window.bar->set_stored_sizes(230, 180);
    window.addDockWidget(Qt::RightDockWidgetArea, window.bar);
    window.show();
    QApplication::processEvents();
    EXPECT_EQ(window.bar->width(), 230);
    window.bar->set_stored_sizes(300, 180);
    QApplication::processEvents();
    EXPECT_EQ(window.bar->width(), 300);

    window.bar->show_bar(false);
    EXPECT_FALSE(window.bar->isVisible());
    window.addDockWidget(Qt::BottomDockWidgetArea, window.bar);
    window.bar->set_stored_sizes(300, 150);
    window.bar->show_bar(true);
    QApplication::processEvents();
    EXPECT_EQ(window.bar->height(), 150);
}

TEST(SizingControlBar, keeps_what_the_user_made_of_it_over_hiding_and_tells_its_size)
{
    Window window;
    window.bar->set_stored_sizes(230, 180);
    window.addDockWidget(Qt::RightDockWidgetArea, window.bar);
    window.show();
    QApplication::processEvents();
    QSignalSpy sizes(window.bar, &CSizingControlBar::resized_to);
    window.resizeDocks({window.bar}, {280}, Qt::Horizontal);
    QApplication::processEvents();
    ASSERT_GT(sizes.count(), 0);
    EXPECT_EQ(sizes.last().at(0).toSize().width(), 280);
    window.bar->show_bar(false);
    QApplication::processEvents();
    window.bar->show_bar(true);
    QApplication::processEvents();
    EXPECT_EQ(window.bar->width(), 280);
}
