// Fonts that travel with a package: taken in, drawn, shared, let go; and those that are missing or none.

#include "archives.h"
#include "core/language.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_static.h"
#include "gui_core/gui_style.h"
#include "gui_core/interface_font.h"
#include "gui_core/style_look.h"
#include "gui_draw/gui_painter.h"
#include "gui_scene/font_library.h"
#include "gui_scene/style_file.h"
#include "support/scene_fixture.h"
#include "support/test_font.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>

using namespace tarn;
using namespace tarn::test;

namespace {

const QString squares = u"Tarn Squares"_s;

class FontsTest : public SceneTest {
protected:
    void SetUp() override
    {
        VLCMsgIniW::set_language(Language::English);
        qputenv("XDG_DATA_HOME", m_folder.filePath(u"data"_s).toUtf8());
    }
    void TearDown() override { qputenv("XDG_DATA_HOME", m_data_home); }

    QString file(const QByteArray& content, const QString& name = u"squares.ttf"_s)
    {
        QFile out(path(name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly) && out.write(content) == content.size());
        return out.fileName();
    }
    QStringList entries()
    {
        QStringList names = m_scene.document().files().keys();
        names.removeIf([](const QString& name) { return !is_font_entry(name); });
        return names;
    }
    QImage picture()
    {
        QImage image(200, 60, QImage::Format_ARGB32_Premultiplied);
        image.fill(0xff506070);
        QPainter painter(&image);
        m_painter.paint(painter, core(), QRectF(image.rect()), 1);
        return image;
    }
    CDXUTControl* label()
    {
        CDXUTControl* made = control(DXUT_CONTROL_STATIC, core().GetRootDialog(), {10, 10, 180, 40});
        set(*made, key<&StaticState::text>, u"ABC"_s);
        return made;
    }
    static void set(ModelObject& object, FieldKey field, const Value& value)
    {
        EXPECT_TRUE(object.set_property(*object.fields().find(field), value));
    }
    QStringList problems()
    {
        QStringList texts;
        for (const auto& problem : m_scene.model().problems())
            texts.append(problem.place + u": "_s + problem.text);
        return texts;
    }
    CGuiStyle* style(const QString& name)
    {
        for (CGuiStyle* style : m_scene.styles())
            if (style->name() == name)
                return style;
        return nullptr;
    }

    GuiPainter m_painter;
    QByteArray m_data_home = qgetenv("XDG_DATA_HOME");
};

} // namespace

TEST_F(FontsTest, a_font_comes_with_its_style_in_one_step_and_the_program_lets_it_go_with_the_scene)
{
    act([&] { label(); });
    const QImage plain = picture();
    const auto steps = m_scene.journal().step_count();
    ASSERT_TRUE(m_scene.take_look_font(DXUT_CONTROL_STATIC, file(TestFont().bytes())));
    EXPECT_EQ(m_scene.journal().step_count(), steps + 1);
    EXPECT_EQ(entries(), QStringList(u"fonts/squares.ttf"_s));
    EXPECT_EQ(core().look().family(DXUT_CONTROL_STATIC), squares);
    const QImage with_font = picture();
    EXPECT_NE(with_font, plain);
    EXPECT_EQ(problems(), QStringList());
    ASSERT_TRUE(m_scene.journal().undo());
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(entries(), QStringList());
    EXPECT_FALSE(QFontDatabase::hasFamily(squares));
    EXPECT_EQ(picture(), plain);
    ASSERT_TRUE(m_scene.journal().redo());
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(picture(), with_font);
    ASSERT_TRUE(m_scene.save_scene(path()));
    m_scene.new_scene();
    EXPECT_FALSE(QFontDatabase::hasFamily(squares));
    ASSERT_TRUE(m_scene.open_scene(path()));
    EXPECT_EQ(picture(), with_font);
}

TEST_F(FontsTest, a_font_is_kept_once_and_goes_when_no_style_control_or_menu_names_it)
{
    CDXUTControl* named = label();
    CDXUTMenu* menu = nullptr;
    act([&] { menu = core().create_menu(u"Menu"_s); });
    ASSERT_TRUE(m_scene.take_look_font(DXUT_CONTROL_STATIC, file(TestFont().bytes())));
    ASSERT_TRUE(m_scene.take_look_font(DXUT_CONTROL_BUTTON, file(TestFont().bytes(), u"the same.ttf"_s)));
    EXPECT_EQ(entries(), QStringList(u"fonts/squares.ttf"_s));
    ASSERT_TRUE(m_scene.take_look_font(look_owner_menu, file(TestFont{.family = u"Tarn Others"_s}.bytes())));
    EXPECT_EQ(entries(), (QStringList{u"fonts/squares-2.ttf"_s, u"fonts/squares.ttf"_s}))
        << "another font of that name";
    m_scene.set_look_font(look_owner_menu, squares);
    EXPECT_EQ(entries(), QStringList(u"fonts/squares.ttf"_s)) << "the other one went";

    act([&] {
        set(*named, key<&ControlExtras::font_family>, squares);
        set(*menu, key<&MenuState::font_family>, squares);
    });
    m_scene.reset_style();
    EXPECT_EQ(entries().size(), 1) << "a control and a menu name it";
    m_scene.RemoveCtrl(named);
    EXPECT_EQ(entries().size(), 1) << "the menu does";
    m_scene.RemoveMenu(menu);
    EXPECT_EQ(entries().size(), 0);
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(entries().size(), 1);

    m_scene.remove_font(entries().first());
    EXPECT_EQ(entries().size(), 0);
    EXPECT_EQ(menu->menu_state().font_family, QString()) << "what was written in it takes the usual one";
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(menu->menu_state().font_family, squares);
}

TEST_F(FontsTest, fonts_go_through_the_files_of_styles_and_through_merges)
{
    label();
    const QImage plain = picture();
    ASSERT_TRUE(m_scene.take_look_font(DXUT_CONTROL_STATIC, file(TestFont().bytes())));
    act([&] { core().set_look_font_style(DXUT_CONTROL_STATIC, {.bold = true, .shadow = true}); });
    const QImage wanted = picture();
    ASSERT_TRUE(m_scene.save_current_style_as(u"Square"_s));
    EXPECT_EQ(picture(), wanted);
    ASSERT_TRUE(m_scene.save_scene(path()));

    m_scene.new_scene();
    label();
    EXPECT_EQ(picture(), plain);
    ASSERT_TRUE(m_scene.ChangeStyle(style(u"Square"_s)));
    EXPECT_EQ(picture(), wanted);
    EXPECT_EQ(entries().size(), 1);
    m_scene.reset_style();
    EXPECT_EQ(entries().size(), 0) << "the style was only lent";

    m_scene.new_scene();
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, true));
    EXPECT_EQ(picture(), wanted);
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Again"_s, true));
    EXPECT_EQ(entries().size(), 1) << "the same font";
    m_scene.new_scene();
    ASSERT_TRUE(m_scene.take_look_font(DXUT_CONTROL_BUTTON, file(TestFont{.family = u"Tarn Others"_s}.bytes())));
    ASSERT_TRUE(m_scene.save_current_style_as(u"Square"_s));
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, false));
    EXPECT_EQ(entries(), QStringList(u"fonts/squares.ttf"_s)) << "theirs stayed behind with its style";
    EXPECT_TRUE(m_scene.fonts().find(u"Tarn Others"_s));
}

TEST_F(FontsTest, what_is_no_font_is_refused_and_in_a_package_it_is_kept_and_told)
{
    const QByteArray font = TestFont().bytes();
    const QByteArray too_large = font + QByteArray(FontLibrary::largest_file, '\0');
    for (const QByteArray& content : {QByteArray(), QByteArray("no font"), font.left(100), too_large})
        EXPECT_FALSE(m_scene.take_look_font(DXUT_CONTROL_STATIC, file(content)));
    EXPECT_FALSE(m_scene.take_look_font(DXUT_CONTROL_STATIC, path(u"missing.ttf"_s)));
    EXPECT_EQ(entries(), QStringList());
    EXPECT_EQ(m_scene.journal().step_count(), 0u);

    read("{\"styles\":[{\"id\":5,\"fonts\":{\"Static\":\"Tarn Squares\",\"Button\":\"No Such "
         "Font\"}}],\"scene_style\":5}",
         {{u"fonts/bad.ttf"_s, font.left(300)}, {u"fonts/good.ttf"_s, font}});
    EXPECT_TRUE(m_scene.fonts().find(squares));
    const QString substitute = drawn_font_family(u"No Such Font"_s);
    EXPECT_EQ(
        problems(),
        QStringList(
            {u"Style: The font No Such Font is neither installed nor in the package; %1 is shown instead."_s.arg(
                 substitute),
             u"fonts/bad.ttf: This file of the package is no font that can be used; saving keeps it as it is."_s}));
    EXPECT_FALSE(substitute.isEmpty());
    ASSERT_TRUE(m_scene.save_scene(path()));
    CPakFile package;
    ASSERT_TRUE(package.open(path()));
    EXPECT_EQ(package.read_file(u"fonts/bad.ttf"_s).value(), font.left(300));

    // A style's file with one good font, one that is none and one that it does not name
    StyleState made;
    made.fonts.insert(u"Static"_s, squares);
    QDir().mkpath(QFileInfo(m_scene.style_file(u"Odd"_s)).path());
    ASSERT_TRUE(write_style_file(m_scene.style_file(u"Odd"_s), made,
                                 {{u"bad.ttf"_s, "no font"},
                                  {u"good.ttf"_s, font},
                                  {u"unused.ttf"_s, TestFont{.family = u"Tarn Others"_s}.bytes()}}));
    m_scene.new_scene();
    ASSERT_TRUE(m_scene.ChangeStyle(style(u"Odd"_s)));
    EXPECT_EQ(entries(), QStringList(u"fonts/good.ttf"_s));
}

TEST_F(FontsTest, a_family_that_the_machine_has_stays_the_machines)
{
    CDXUTControl* made = label();
    const QString known = QFontInfo(interface_font(default_font_size, false)).family();
    set(*made, key<&ControlExtras::font_family>, known);
    const QImage plain = picture();
    ASSERT_TRUE(m_scene.take_look_font(DXUT_CONTROL_STATIC, file(TestFont{.family = known}.bytes())));
    EXPECT_EQ(picture(), plain) << "no package changes the letters of the program's own windows";
    EXPECT_EQ(entries().size(), 1) << "another machine may need it";
    EXPECT_TRUE(m_scene.fonts().find(known));
    EXPECT_EQ(problems(), QStringList());
    ASSERT_TRUE(m_scene.take_look_font(DXUT_CONTROL_BUTTON, file(TestFont().bytes())));
    ASSERT_TRUE(m_scene.take_look_font(DXUT_CONTROL_SLIDER, file(TestFont{.copyright = u"Another cut"_s}.bytes())));
    EXPECT_EQ(entries().size(), 3) << "two fonts of one family";
    const auto& fonts = m_scene.fonts().fonts();
    EXPECT_EQ(std::ranges::count_if(fonts, [](const FontLibrary::Font& font) { return font.id >= 0; }), 2);
}

TEST_F(FontsTest, a_font_tells_of_its_makers_rights_and_a_made_up_table_is_read_to_its_end_and_no_further)
{
    const TestFont font{
        .copyright = u"© 2026 Somebody"_s, .licence = u"Use it."_s, .address = u"https://example.org"_s};
    ASSERT_TRUE(m_scene.take_look_font(DXUT_CONTROL_STATIC, file(font.bytes())));
    const FontNotice notice = FontLibrary::notice(*m_scene.fonts().find(squares));
    EXPECT_EQ(notice.copyright, font.copyright);
    EXPECT_EQ(notice.licence, font.licence);
    EXPECT_EQ(notice.address, font.address);
    EXPECT_TRUE(font_notice({}).is_empty());
    const QByteArray table = font.name_table();
    for (qsizetype size = 0; size < table.size(); ++size)
        (void)font_notice(table.left(size));
    for (qsizetype place = 0; place < 30; ++place) {
        QByteArray changed = table;
        changed[place] = '\xff';
        (void)font_notice(changed);
    }
    const TestFont endless{.licence = QString(30'000, u'x')};
    EXPECT_EQ(font_notice(endless.name_table()).licence.size(), 20'000);
}

TEST_F(FontsTest, a_style_says_bold_italic_and_shadow_and_a_nearer_one_can_take_them_back)
{
    label();
    const QImage plain = picture();
    act([&] { core().set_look_font_style(DXUT_CONTROL_STATIC, {.bold = true, .italic = true, .shadow = true}); });
    EXPECT_NE(picture(), plain);
    ASSERT_TRUE(m_scene.save_current_style_as(u"Loud"_s));
    act([&] { core().set_look_font_style(DXUT_CONTROL_STATIC, {}); });
    EXPECT_EQ(picture(), plain);
    EXPECT_EQ(core().worn_style()->name(), u"Loud"_s);
    ASSERT_TRUE(m_scene.save_current_style_as(u"Quiet"_s));
    EXPECT_EQ(picture(), plain);
    EXPECT_EQ(font_style_from(u"shadow of unknown words"_s), (FontStyle{.shadow = true}));
}
