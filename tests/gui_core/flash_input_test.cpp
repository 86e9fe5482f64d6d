#include "gui_core/dxut_media.h"
#include "gui_core/gui_input.h"
#include "support/gui_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

/// Notes what a movie would be told.
class NotedMovies final : public MovieLink {
public:
    QImage picture(const CDXUTFlash&, QSize) override { return {}; }
    QString failure(const CDXUTFlash&) const override { return plays ? QString() : u"no player"_s; }
    bool is_played(const CDXUTFlash&) const override { return plays; }
    void mouse(const CDXUTFlash&, Mouse what, QPointF inside) override
    {
        const char* const names[] = {"enter", "move", "down", "up", "leave"};
        told << u"%1 %2,%3"_s.arg(QLatin1String(names[int(what)])).arg(inside.x()).arg(inside.y());
    }
    void wheel(const CDXUTFlash&, double steps) override { told << u"wheel %1"_s.arg(steps); }
    void key(const CDXUTFlash&, bool down, const QString& key, const QString& code) override
    {
        told << (down ? u"+"_s : u"-"_s) + key + (code.isEmpty() || code == key ? QString() : u' ' + code);
    }
    QString take() { return std::exchange(told, {}).join(u"; "_s); }

    bool plays = true;
    QStringList told;
};

class FlashInput : public GuiTest {
protected:
    FlashInput()
    {
        m_core.EnableGui(false);
        m_core.set_movies(&m_movies);
        (void)set(*m_flash, "keyboard_input", true);
    }
    ~FlashInput() override { m_core.set_movies(nullptr); }
    void type(int key, const QString& text)
    {
        m_input.key_pressed(key, {});
        m_input.text_typed(text, {});
    }

    NotedMovies m_movies;
    GuiInput m_input{m_core};
    CDXUTDialog* m_home = dialog({100, 100, 300, 200});
    CDXUTFlash* m_flash = control<CDXUTFlash>(m_home, DXUT_CONTROL_FLASH, {20, 30, 120, 90});
    QPointF m_corner = m_flash->screen_rect().topLeft();
};

} // namespace

TEST_F(FlashInput, tells_the_movie_where_the_mouse_is_also_while_it_is_held_and_beside_it)
{
    m_input.mouse_moved(m_corner + QPointF(5, 6));
    EXPECT_EQ(m_movies.take(), u"enter 5,6; move 5,6"_s);
    m_input.mouse_moved(m_corner + QPointF(7, 8));
    EXPECT_EQ(m_movies.take(), u"move 7,8"_s);
    m_input.mouse_pressed(m_corner + QPointF(7, 8));
    EXPECT_TRUE(m_movies.take().endsWith(u"down 7,8"_s));
    m_input.mouse_moved(m_corner + QPointF(-10, 8));
    EXPECT_TRUE(m_movies.take().contains(u"leave"_s));
    m_input.mouse_moved(m_corner + QPointF(-11, 8));
    EXPECT_EQ(m_movies.take(), u"move -11,8"_s);
    m_input.mouse_released(m_corner + QPointF(-11, 8));
    EXPECT_TRUE(m_movies.take().contains(u"up -11,8"_s));
    EXPECT_TRUE(m_input.wheel_turned(m_corner + QPointF(5, 5), 2));
    EXPECT_TRUE(m_movies.take().contains(u"wheel 2"_s));

    (void)set(*m_flash, "mouse_input", false);
    m_input.mouse_pressed(m_corner + QPointF(7, 8));
    m_input.mouse_released(m_corner + QPointF(7, 8));
    EXPECT_EQ(m_movies.take(), QString());
    m_movies.plays = false;
    EXPECT_FALSE(m_flash->is_interactive());
    EXPECT_TRUE(m_flash->description().endsWith(u"no player"_s));
}

TEST_F(FlashInput, tells_the_movie_keys_until_they_are_let_go)
{
    m_core.set_focused(m_flash);
    type(Qt::Key_A, u"a"_s);
    m_input.key_pressed(Qt::Key_Left, {});
    EXPECT_EQ(m_movies.take(), u"+a KeyA; +ArrowLeft"_s);
    m_input.key_released(Qt::Key_A);
    m_input.key_released(Qt::Key_A);
    EXPECT_EQ(m_movies.take(), u"-a KeyA"_s);
    type(Qt::Key_Space, u" "_s);
    EXPECT_EQ(m_movies.take(), u"+  Space"_s);
    m_flash->release_keys();
    EXPECT_EQ(m_movies.take().split(u"; "_s).size(), 2) << "the arrow and the space";

    // Letters of an input method have no key, and some movies take none.
    m_input.text_typed(u"é中"_s, {});
    EXPECT_EQ(m_movies.take(), u"+é; -é"_s);
    (void)set(*m_flash, "chinese_input", true);
    EXPECT_FALSE(m_input.caret().isEmpty());
    m_input.text_typed(u"中"_s, {});
    EXPECT_EQ(m_movies.take(), u"+中; -中"_s);

    (void)set(*m_flash, "keyboard_input", false);
    type(Qt::Key_B, u"b"_s);
    m_input.key_pressed(Qt::Key_Left, {});
    EXPECT_EQ(m_movies.take(), QString());
}
