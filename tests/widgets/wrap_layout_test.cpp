#include "widgets/wrap_layout.h"

#include <QFrame>

#include <gtest/gtest.h>

namespace {

class WrapLayoutTest : public testing::Test {
protected:
    WrapLayoutTest()
    {
        m_layout = new WrapLayout(&m_window);
        m_layout->setContentsMargins(3, 2, 3, 4);
        m_layout->setSpacing(5);
        for (int i = 0; i < 3; ++i) {
            if (i > 0) {
                auto* line = new QFrame;
                line->setFrameShape(QFrame::VLine);
                line->setFixedWidth(1);
                m_lines.push_back(line);
                m_layout->addWidget(line);
            }
            auto* item = new QWidget;
            item->setFixedSize(100, 20);
            m_items.push_back(item);
            m_layout->addWidget(item);
        }
    }
    void lay_out(int width) { m_layout->setGeometry(QRect(0, 0, width, m_layout->heightForWidth(width))); }

    QWidget m_window;
    WrapLayout* m_layout;
    std::vector<QWidget*> m_items;
    std::vector<QFrame*> m_lines;
};

constexpr int all_in_one_row = 3 + 100 + 2 * (5 + 1 + 5 + 100) + 3;

} // namespace

TEST_F(WrapLayoutTest, an_item_that_does_not_fit_begins_a_row_without_a_separator)
{
    EXPECT_EQ(m_layout->sizeHint(), QSize(all_in_one_row, 26));
    lay_out(all_in_one_row);
    EXPECT_EQ(m_items[2]->geometry().topLeft(), QPoint(225, 2));
    EXPECT_EQ(m_lines[1]->geometry(), QRect(219, 2, 1, 20));

    lay_out(all_in_one_row - 1);
    EXPECT_EQ(m_layout->heightForWidth(all_in_one_row - 1), 26 + 5 + 20);
    EXPECT_EQ(m_items[2]->geometry().topLeft(), QPoint(3, 27));
    EXPECT_FALSE(m_lines[0]->geometry().isEmpty());
    EXPECT_TRUE(m_lines[1]->geometry().isEmpty());

    lay_out(all_in_one_row);
    EXPECT_EQ(m_lines[1]->geometry(), QRect(219, 2, 1, 20)) << "it is back with the row";
}

TEST_F(WrapLayoutTest, a_hidden_item_leaves_no_gap)
{
    m_items[1]->hide();
    lay_out(all_in_one_row);
    EXPECT_EQ(m_items[2]->geometry().topLeft(), QPoint(3 + 100 + 5 + 1 + 5, 2));
    EXPECT_EQ(m_layout->heightForWidth(106), 26 + 5 + 20);
    EXPECT_EQ(m_layout->minimumSize(), QSize(106, 26));
}
