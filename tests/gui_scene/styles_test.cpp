// Styles as an author uses them: changed, saved as files, taken on, merged and removed.

#include "archives.h"
#include "gui_core/control_class.h"
#include "gui_core/gui_style.h"
#include "gui_core/style_look.h"
#include "gui_draw/gui_painter.h"
#include "gui_scene/style_file.h"
#include "gui_scene/style_library.h"
#include "support/gui_fixture.h"
#include "support/scene_fixture.h"

#include <QPainter>

using namespace tarn;
using namespace tarn::test;

namespace {

constexpr LookPart button_body{DXUT_CONTROL_BUTTON, 0, VisualState::Normal};
constexpr LookPart list_field{DXUT_CONTROL_LISTBOX, 0, VisualState::Normal};

class StylesTest : public SceneTest {
protected:
    void SetUp() override { qputenv("XDG_DATA_HOME", m_folder.filePath(u"data"_s).toUtf8()); }
    void TearDown() override { qputenv("XDG_DATA_HOME", m_data_home); }

    /// A dialog with a control of every type.
    void make_interface()
    {
        CDXUTDialog* home = dialog({20, 40, 600, 300}, u"Home"_s);
        int place = 0;
        for (const ControlClass& row : control_classes())
            if (row.create) {
                ++place;
                control(row.type, home,
                        QRectF(QPointF(10 + place % 4 * 145, 10 + place / 4 * 70 + place % 2), QSizeF(130, 50)));
            }
        act([&] { (void)core().create_menu(u"Menu"_s); });
    }
    /// A look that differs from the usual one in everything that a style can say.
    void change_look()
    {
        act([&] {
            QImage picture(40, 30, QImage::Format_ARGB32);
            picture.fill(QColor(200, 30, 90, 77));
            picture.setPixelColor(3, 3, QColor(1, 2, 3, 4));
            core().set_element_texture(button_body, picture);
            core().set_element_texture(list_field, picture.scaled(96, 96));
            core().set_edge_widths(button_body, {3, 4, 5, 6});
            core().set_token(u"text"_s, 0xffff8800);
            core().set_token(u"glow"_s, 0xff00ff00);
            core().set_element_color({DXUT_CONTROL_SLIDER, 1, VisualState::Normal}, u"glow"_s);
            core().set_element_color({look_owner_dialog, 0, VisualState::Focused}, color_text(0xffaa4444));
            core().set_look_font_size(DXUT_CONTROL_STATIC, 22);
        });
    }
    QImage picture()
    {
        QImage image(640, 360, QImage::Format_ARGB32_Premultiplied);
        image.fill(0xff506070);
        QPainter painter(&image);
        m_painter.paint(painter, core(), QRectF(image.rect()), 1);
        return image;
    }
    CGuiStyle* style(const QString& name)
    {
        for (CGuiStyle* style : m_scene.styles())
            if (style->name() == name)
                return style;
        return nullptr;
    }
    QStringList names()
    {
        QStringList all;
        for (const CGuiStyle* style : m_scene.styles())
            all << style->name() + QString::number(int(style->origin()));
        return all;
    }
    QString file(const QString& name) { return m_scene.style_file(name); }

    GuiPainter m_painter;
    QByteArray m_data_home = qgetenv("XDG_DATA_HOME");
};

} // namespace

TEST_F(StylesTest, every_part_has_a_room_of_its_own_in_the_atlas)
{
    const QRect atlas(QPoint(), Atlas::of_program().size());
    QList<QRect> rooms;
    for (const LookOwner& owner : look_owners())
        for (int part = 0; part < part_count(owner); ++part)
            for (int state = 0; state < (part_has_states(owner, part) ? style_state_count : 1); ++state) {
                const QRect room = core().get_default_rect(owner.number, part * style_state_count + state);
                EXPECT_EQ(room.isEmpty(), !element_part(owner, part)) << owner.name << part;
                if (room.isEmpty())
                    continue;
                EXPECT_TRUE(atlas.contains(room));
                for (const QRect& other : rooms)
                    EXPECT_FALSE(room.intersects(other)) << owner.name << part;
                rooms << room;
            }
    EXPECT_TRUE(core().get_default_rect(DXUT_CONTROL_BUTTON, -1).isEmpty());
    EXPECT_TRUE(core().get_default_rect(12, 0).isEmpty());
    EXPECT_TRUE(core().get_default_rect(DXUT_CONTROL_BUTTON, 500).isEmpty());
}

TEST_F(StylesTest, a_style_goes_through_file_package_and_merge_without_changing_a_pixel)
{
    make_interface();
    const QImage plain = picture();
    change_look();
    const QImage wanted = picture();
    ASSERT_NE(wanted, plain);
    ASSERT_TRUE(m_scene.save_current_style_as(u"Mine"_s).ok());
    EXPECT_EQ(picture(), wanted) << "saved";
    m_scene.reset_style();
    EXPECT_EQ(picture(), plain);
    ASSERT_TRUE(m_scene.ChangeStyle(style(u"Mine"_s)).ok());
    EXPECT_EQ(picture(), wanted) << "the scene's own";

    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    const QByteArray before = text();
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), before));
    EXPECT_EQ(picture(), wanted) << "of a package";
    const QByteArray bytes = saved_bytes();
    EXPECT_EQ(saved_bytes(), bytes);

    m_scene.new_scene();
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, true).ok());
    EXPECT_EQ(picture(), wanted) << "merged with its look";
    m_scene.new_scene();
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, false).ok());
    EXPECT_EQ(picture(), plain) << "merged without it";
    act([&] { m_scene.remove_style(style(u"Mine"_s)); });
    ASSERT_EQ(style(u"Mine"_s)->origin(), StyleOrigin::User);
    ASSERT_TRUE(m_scene.ChangeStyle(style(u"Mine"_s)).ok());
    EXPECT_EQ(picture(), wanted) << "of its file";
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(picture(), plain);
}

TEST_F(StylesTest, changes_that_were_not_saved_as_a_style_are_part_of_the_package)
{
    make_interface();
    change_look();
    const QImage wanted = picture();
    EXPECT_TRUE(m_scene.styles().isEmpty() || m_scene.styles().first()->origin() == StyleOrigin::Program);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    m_scene.new_scene();
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_EQ(picture(), wanted);
    while (m_scene.journal().undo()) {}
    m_scene.reset_style();
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    CPakFile package;
    ASSERT_TRUE(package.open(path()).ok());
    EXPECT_EQ(package.names(), (QStringList{u"manifest.json"_s, u"scene.json"_s})) << "no atlas of its own any more";
}

TEST_F(StylesTest, parts_that_looked_alike_do_not_follow_the_one_that_gets_another_picture)
{
    const QImage edit = core().texture({DXUT_CONTROL_EDITBOX, 0, VisualState::Normal});
    ASSERT_EQ(core().texture(list_field), edit);
    QImage red(10, 6, QImage::Format_ARGB32);
    red.fill(Qt::red);
    act([&] { core().set_element_texture(list_field, red); });
    EXPECT_EQ(core().texture(list_field), red);
    EXPECT_EQ(core().texture_rect(list_field).size(), red.size());
    EXPECT_EQ(core().texture_rect(list_field).topLeft(), core().default_rect(list_field).topLeft());
    EXPECT_EQ(core().texture({DXUT_CONTROL_EDITBOX, 0, VisualState::Normal}), edit);
    act([&] { core().reset_element(list_field); });
    EXPECT_EQ(core().texture(list_field), edit);
    EXPECT_FALSE(core().is_element_changed(list_field));
}

TEST_F(StylesTest, undo_keeps_kilobytes_of_an_atlas_and_brings_back_every_pixel)
{
    make_interface();
    const QImage before = picture();
    constexpr int edits = 20;
    m_scene.journal().set_budget(edits * 16 * 1024);
    m_scene.document().forget_history();
    for (int i = 0; i < edits; ++i)
        act([&] {
            QImage noise(96, 96, QImage::Format_ARGB32);
            noise.fill(QColor(i * 10, 99, 3, 200));
            core().set_element_texture({DXUT_CONTROL_BUTTON, 0, VisualState(i % style_state_count)}, noise);
        });
    EXPECT_EQ(m_scene.journal().step_count(), std::size_t(edits));
    EXPECT_FALSE(m_scene.journal().has_dropped());
    const QImage after = picture();
    while (m_scene.journal().undo()) {}
    EXPECT_EQ(picture(), before);
    while (m_scene.journal().redo()) {}
    EXPECT_EQ(picture(), after);
}

TEST_F(StylesTest, a_named_colour_changes_all_that_refers_to_it_and_the_nearest_style_has_the_word)
{
    const auto text_color = [&] { return core().look().text_color(DXUT_CONTROL_CHECKBOX, VisualState::Normal); };
    EXPECT_EQ(text_color(), 0xffe8eef0u);
    act([&] { core().set_token(u"text"_s, 0xff112233); });
    EXPECT_EQ(text_color(), 0xff112233u);
    ASSERT_TRUE(m_scene.save_current_style_as(u"Blue"_s).ok());
    EXPECT_EQ(core().scene_style(), core().worn_style());
    act([&] { core().set_element_color({DXUT_CONTROL_CHECKBOX, 2, VisualState::Normal}, u"glow"_s); });
    EXPECT_EQ(text_color(), 0xff112233u) << "there is no colour of that name";
    act([&] { core().set_token(u"glow"_s, 0xff00ff00); });
    EXPECT_EQ(text_color(), 0xff00ff00u);
    EXPECT_EQ(core().look().text_color(DXUT_CONTROL_CHECKBOX, VisualState::Hover), 0xff00ff00u);
    EXPECT_EQ(core().look().text_color(DXUT_CONTROL_CHECKBOX, VisualState::Disabled), 0xff7f8c93u);
    EXPECT_EQ(core().worn_style()->name(), u"Blue"_s);
    EXPECT_NE(core().scene_style(), core().worn_style());
    EXPECT_TRUE(core().scene_style()->style_state().tokens.contains(u"glow"_s));
    m_scene.reset_style();
    EXPECT_EQ(text_color(), 0xffe8eef0u);
    EXPECT_EQ(core().GetStyles().size(), 1) << "what was not saved is gone";
}

TEST_F(StylesTest, saving_makes_style_and_file_and_removing_the_style_keeps_the_look)
{
    make_interface();
    change_look();
    const QImage wanted = picture();
    EXPECT_FALSE(m_scene.save_current_style_as(u"../out"_s).ok());
    EXPECT_FALSE(m_scene.save_current_style_as(u"  "_s).ok());
    EXPECT_TRUE(file(u"../out"_s).isEmpty() && file(u".hidden"_s).isEmpty() && file(u"a/b"_s).isEmpty());
    ASSERT_TRUE(m_scene.save_current_style_as(u"湖"_s).ok());
    ASSERT_TRUE(m_scene.save_current_style_as(u"湖"_s).ok()) << "again, in place of itself";
    EXPECT_TRUE(names().contains(u"湖0"_s) && !names().contains(u"湖1"_s)) << names().join(u' ').toStdString();
    EXPECT_TRUE(QFile::exists(file(u"湖"_s)));
    m_scene.remove_style(style(u"湖"_s));
    EXPECT_EQ(picture(), wanted);
    EXPECT_TRUE(names().contains(u"湖1"_s)) << "the file is another matter";
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(names().contains(u"湖0"_s));
    EXPECT_EQ(picture(), wanted);
}

TEST_F(StylesTest, a_style_lent_by_its_file_leaves_the_scene_with_the_next_one)
{
    change_look();
    ASSERT_TRUE(m_scene.save_current_style_as(u"Mine"_s).ok());
    m_scene.new_scene();
    ASSERT_TRUE(m_scene.ChangeStyle(style(u"Mine"_s)).ok());
    ASSERT_EQ(core().GetStyles().size(), 1);
    EXPECT_TRUE(core().worn_style()->is_attached());
    act([&] { core().set_token(u"text"_s, 0xff123456); });
    EXPECT_EQ(core().GetStyles().size(), 2) << "it and what was changed of it";
    EXPECT_EQ(names().count(u"Mine1"_s), 1);
    m_scene.reset_style();
    EXPECT_TRUE(core().GetStyles().isEmpty());
}

TEST_F(StylesTest, styles_that_are_based_on_each_other_in_a_ring_or_on_nothing_can_be_drawn)
{
    read(
        R"({"scene_style":2,"root":{"id":1},"styles":[{"id":2,"name":"A","base":3},{"id":3,"base":2,"tokens":{"text":7}},)"
        R"({"id":4,"name":"C","base":99,"regions":{"Button.Body.normal":"9 9 1 1","Button.Body.hover":"0 0 9999 9"},)"
        R"("edges":{"Button.Body.normal":"1/2"},"colors":{"Button.Text.normal":"#zz"}}]})");
    EXPECT_EQ(core().look().token(u"text"_s), 7u);
    make_interface();
    EXPECT_FALSE(picture().isNull());
    ASSERT_TRUE(m_scene.ChangeStyle(style(u"C"_s)).ok());
    EXPECT_EQ(core().texture_rect(button_body), core().default_rect(button_body));
    EXPECT_EQ(core().edge_widths(button_body), QMargins(28, 28, 28, 28));
    EXPECT_FALSE(picture().isNull());
}

TEST_F(StylesTest, an_atlas_that_cannot_be_used_is_kept_and_the_style_does_without)
{
    read(R"({"scene_style":2,"root":{"id":1},"styles":[{"id":2,"name":"A"}]})",
         {{u"styles/2.png"_s, png(Qt::red)}, {u"styles/7.png"_s, "x"}});
    EXPECT_TRUE(core().scene_style()->style_state().atlas.is_null());
    const auto problems = m_scene.model().problems();
    EXPECT_EQ(
        std::count_if(problems.begin(), problems.end(), [](const auto& problem) { return problem.place == u"A"_s; }),
        1);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_EQ(m_scene.document().files().size(), 2);
    change_look();
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    EXPECT_TRUE(m_scene.open_scene(path()).ok());
}

TEST_F(StylesTest, hostile_files_are_refused_and_change_nothing)
{
    const QByteArray manifest = R"({"format":1,"kind":"style"})";
    const QByteArray style = R"({"tokens":{"text":5}})";
    QByteArray whole_atlas;
    whole_atlas = Atlas::of_program().png();
    const std::pair<const char*, QByteArray> files[] = {
        {"no zip", "PK but not really"},
        {"empty", {}},
        {"no manifest", archive_of({{"style.json", style}})},
        {"no style", archive_of({{"manifest.json", manifest}})},
        {"another kind", archive_of({{"manifest.json", R"({"format":1})"}, {"style.json", style}})},
        {"newer", archive_of({{"manifest.json", R"({"format":2,"kind":"style"})"}, {"style.json", style}})},
        {"broken text", archive_of({{"manifest.json", manifest}, {"style.json", "{\"tokens\":{\"text\":"}})},
        {"wrong type", archive_of({{"manifest.json", manifest}, {"style.json", R"({"tokens":[1]})"}})},
        {"small atlas", archive_of({{"manifest.json", manifest}, {"style.json", style}, {"atlas.png", png(Qt::red)}})},
        {"cut atlas",
         archive_of({{"manifest.json", manifest}, {"style.json", style}, {"atlas.png", whole_atlas.left(2000)}})},
        {"leaving name", archive_of({{"manifest.json", manifest}, {"style.json", style}, {"../x", "x"}})},
    };
    QDir().mkpath(StyleLibrary::user_folder());
    for (const auto& [what, bytes] : files) {
        QFile out(file(u"Bad"_s));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
        out.close();
        CGuiStyle* bad = this->style(u"Bad"_s);
        ASSERT_NE(bad, nullptr);
        const Status status = m_scene.ChangeStyle(bad);
        EXPECT_FALSE(status.ok()) << what;
        EXPECT_TRUE(status.message().contains(u"Bad.style"_s)) << what << status.message().toStdString();
        EXPECT_TRUE(core().GetStyles().isEmpty() && !m_scene.journal().can_undo()) << what;
    }
    QFile out(file(u"Bad"_s));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(archive_of({{"manifest.json", manifest},
                          {"style.json", R"({"id":1,"base":1,"name":"../../x","tokens":{"text":5},"later":[]})"},
                          {"later.bin", "x"}}));
    out.close();
    ASSERT_TRUE(m_scene.ChangeStyle(this->style(u"Bad"_s)).ok());
    EXPECT_EQ(core().worn_style()->name(), u"Bad"_s) << "a file says what it is called";
    EXPECT_EQ(core().look().token(u"text"_s), 5u);
}
