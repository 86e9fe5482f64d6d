#include "gui_scene/layout_problems.h"
#include "gui_scene/translations/translations.h"
#include "support/attributes.h"
#include "support/scene_fixture.h"

#include "animation/animation_scene.h"

using namespace tarn;
using namespace tarn::test;

namespace {

/// A dialog with a caption, a button and a list, in English, and two languages for them.
class TranslationsTest : public SceneTest {
protected:
    TranslationsTest()
    {
        core().set_screen_size({800, 600});
        m_dialog = dialog({10, 10, 300, 200}, u"box"_s);
        m_button = control(DXUT_CONTROL_BUTTON, m_dialog, {10, 10, 60, 24}, u"buy"_s);
        m_list = control(DXUT_CONTROL_LISTBOX, m_dialog, {10, 50, 100, 80}, u"goods"_s);
        EXPECT_TRUE(set(*m_dialog, "caption", u"Shop"_s));
        EXPECT_TRUE(set(*m_button, "text", u"Buy"_s));
        EXPECT_TRUE(set(*m_list, "items", QStringList({u"Rope"_s, u"12"_s, u"Tie"_s, u"Rope"_s})));
        for (const QString& language : {u"de"_s, u"zh"_s})
            EXPECT_TRUE(translations().add_language(language).ok());
        m_scene.journal().clear();
    }
    Translations& translations() { return m_scene.translations(); }
    SeenText seen(const QString& text)
    {
        for (const SeenText& one : seen_texts(core().document()))
            if (one.text == text)
                return one;
        ADD_FAILURE() << "no text " << text.toStdString();
        return {};
    }
    void translate(const QString& text, const QString& german) { translations().set_text(seen(text), u"de"_s, german); }
    QString shown(const CDXUTControl& control) { return std::get<QString>(property(control, "text")); }
    Value property(const ModelObject& object, const char* name) { return object.property(*object.fields().find(name)); }

    CDXUTDialog* m_dialog = nullptr;
    CDXUTControl* m_button = nullptr;
    CDXUTControl* m_list = nullptr;
};

} // namespace

TEST_F(TranslationsTest, TextsThatPlayersReadAreFoundOnceAndNumbersAreNone)
{
    QStringList texts;
    for (const SeenText& one : seen_texts(core().document()))
        texts.append(one.text);
    EXPECT_EQ(texts, QStringList({u"Shop"_s, u"Buy"_s, u"Rope"_s, u"Tie"_s}));
}

TEST_F(TranslationsTest, ThePreviewShowsALanguageAndKeepsWhatTheAuthorWrote)
{
    translate(u"Buy"_s, u"Kaufen"_s);
    translate(u"Rope"_s, u"Tie"_s); // What one entry becomes must not be taken for another one.
    translate(u"Tie"_s, u"Schlips"_s);
    const QByteArray before = text();
    m_scene.set_language(u"de"_s);
    m_scene.play(true);
    EXPECT_EQ(shown(*m_button), u"Kaufen"_s);
    EXPECT_EQ(property(*m_list, "items"), Value(QStringList({u"Tie"_s, u"12"_s, u"Schlips"_s, u"Tie"_s})));
    EXPECT_EQ(property(*m_dialog, "caption"), Value(u"Shop"_s)) << "it has no translation";
    m_scene.set_language(u"zh"_s);
    EXPECT_EQ(shown(*m_button), u"Buy"_s);
    EXPECT_EQ(property(*m_list, "items"), Value(QStringList({u"Rope"_s, u"12"_s, u"Tie"_s, u"Rope"_s})));
    m_scene.play(false);
    EXPECT_EQ(text(), before);
}

TEST_F(TranslationsTest, PicturesShowALanguageThatThereIs)
{
    translate(u"Buy"_s, u"Kaufen"_s);
    EXPECT_TRUE(m_scene.show_texts(u"de"_s).ok());
    EXPECT_EQ(shown(*m_button), u"Kaufen"_s);
    EXPECT_TRUE(m_scene.show_texts(u"xx"_s).message().contains(u"de, zh"_s));
}

TEST_F(TranslationsTest, TheyAreUndoneSavedAndMerged)
{
    translate(u"Buy"_s, u"Kaufen"_s);
    translate(u"Rope"_s, u"Seil"_s);
    const QByteArray saved = text();
    translate(u"Buy"_s, {});
    EXPECT_TRUE(translations().text(seen(u"Buy"_s), u"de"_s).isEmpty());
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(text(), saved);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_EQ(text(), saved);
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, false).ok());
    const auto texts = seen_texts(core().document());
    EXPECT_EQ(std::ranges::count_if(
                  texts, [&](const SeenText& one) { return translations().text(one, u"de"_s) == u"Kaufen"_s; }),
              2)
        << "the copy's text follows it";
    EXPECT_EQ(translations().languages(), QStringList({u"de"_s, u"zh"_s}));
}

TEST_F(TranslationsTest, AChangedTextIsOutdatedAndALanguageTakesItsTextsAlong)
{
    translate(u"Buy"_s, u"Kaufen"_s);
    EXPECT_TRUE(set(*m_button, "text", u"Purchase"_s));
    EXPECT_TRUE(translations().is_outdated(seen(u"Purchase"_s)));
    EXPECT_EQ(translations().text(seen(u"Purchase"_s), u"de"_s), u"Kaufen"_s);
    EXPECT_FALSE(translations().add_language(u" de "_s).ok());
    for (const QString& name : {u" "_s, u"DE"_s, u"../de"_s, u"d\"e"_s})
        EXPECT_FALSE(translations().add_language(name).ok()) << name.toStdString();
    translations().remove_language(u"de"_s);
    EXPECT_FALSE(translations().find(seen(u"Purchase"_s)));
    m_scene.journal().undo();
    EXPECT_EQ(translations().text(seen(u"Purchase"_s), u"de"_s), u"Kaufen"_s);
}

TEST_F(TranslationsTest, ATextThatDoesNotFitInALanguageIsToldWithIt)
{
    translate(u"Buy"_s, u"Unwiderruflich kaufen und bezahlen"_s);
    translate(u"Shop"_s, u"Gemischtwarenhandlung für Abenteurer und andere\nLeute"_s);
    const QSize size(800, 600);
    const auto found = find_layout_problems(m_scene, {&size, 1}, false);
    const auto& problems = found.value();
    ASSERT_EQ(problems.size(), 2u);
    EXPECT_EQ(problems[0].object, m_dialog);
    EXPECT_EQ(problems[1].object, m_button);
    EXPECT_TRUE(problems[1].text.contains(u"de"_s));
    EXPECT_EQ(find_cut_texts(m_scene, u"de"_s), (QSet<quint32>{m_button->id(), m_dialog->id()}));
    EXPECT_EQ(find_cut_texts(m_scene, u"zh"_s), QSet<quint32>{});
    EXPECT_EQ(shown(*m_button), u"Buy"_s);
}
