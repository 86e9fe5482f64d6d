#include "gui_scene/translations/translations.h"
#include "manager/dlg_translations.h"
#include "manager/translation_table.h"
#include "shell/page_bar.h"
#include "support/attributes.h"
#include "support/editor_fixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

namespace tarn::test {

namespace {

/// The shown table of a scene with two buttons and the language "de".
class TranslationPage : public Editor {
protected:
    void SetUp() override
    {
        start();
        VLCMsgIniW::set_language(Language::English);
        CDXUTDialog* box = core().create_dialog({10, 10, 300, 200}, u"box"_s);
        EXPECT_TRUE(set(*box, "caption_shown", false)); // What is not read is not translated.
        for (const QString& text : {u"Buy"_s, u"Sell"_s})
            EXPECT_TRUE(
                set(*core().create_control(DXUT_CONTROL_BUTTON, box, {10, 10, 60, 24}, text.toLower()), "text", text));
        EXPECT_TRUE(translations().add_language(u"de"_s).ok());
        m_scene->document().forget_history();
        m_frame.resize(1200, 800);
        m_frame.show();
        m_frame.findChild<CPageBar*>(u"CTranslationBar"_s)->show_bar(true);
        m_page = page(u"CDlgTranslations"_s);
        m_view = static_cast<QTableView*>(m_page->control(7308));
        tell();
    }
    Translations& translations() { return m_scene->translations(); }
    void tell() { m_scene->document().changes().tell(); }
    void click(int id) { static_cast<QAbstractButton*>(m_page->control(id))->click(); }
    void filter(int index)
    {
        auto* box = static_cast<QComboBox*>(m_page->control(7302));
        box->setCurrentIndex(index);
        Q_EMIT box->activated(index);
    }
    QVariant cell(int row, int column, int role = Qt::DisplayRole)
    {
        return m_view->model()->index(row, column).data(role);
    }
    bool type(int row, int column, const QString& text)
    {
        const bool taken = m_view->model()->setData(m_view->model()->index(row, column), text, Qt::EditRole);
        tell();
        return taken;
    }
    QStringList shown()
    {
        QStringList texts;
        for (int row = 0; row < m_view->model()->rowCount(); ++row)
            texts.append(cell(row, TranslationTable::Text).toString());
        return texts;
    }

    CChildDlg* m_page = nullptr;
    QTableView* m_view = nullptr;
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(TranslationPage, a_typed_cell_is_one_step_and_marks_tell_what_is_wrong)
{
    EXPECT_EQ(shown(), QStringList({u"Buy"_s, u"Sell"_s}));
    EXPECT_EQ(cell(0, 2, Qt::ToolTipRole), u"There is no translation"_s);
    EXPECT_TRUE(type(0, 2, u"Kaufen"_s));
    EXPECT_EQ(cell(0, 2), u"Kaufen"_s);
    EXPECT_FALSE(type(0, 1, u"Buy it"_s)) << "the author's text is written elsewhere";
    EXPECT_EQ(m_scene->journal().step_count(), 1u);
    EXPECT_TRUE(type(1, 2, u"Unwiderruflich verkaufen und alles verlieren"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return cell(1, 2, Qt::ToolTipRole) == u"The text does not fit"_s; }));
    filter(3);
    EXPECT_EQ(shown(), QStringList(u"Sell"_s));
    tell();
    const auto turn = m_scene->document().changes().turn();
    QTest::qWait(500);
    EXPECT_EQ(m_scene->document().changes().turn(), turn) << "to measure texts is no change, and comes to an end";
    EXPECT_TRUE(set(*core().controls()[0], "text", u"Purchase"_s));
    tell();
    filter(2);
    EXPECT_EQ(shown(), QStringList(u"Purchase"_s));
    filter(1);
    EXPECT_EQ(shown(), QStringList());
    filter(0);
    static_cast<QLineEdit*>(m_page->control(7303))->setText(u"kauf"_s);
    EXPECT_EQ(shown(), QStringList({u"Purchase"_s, u"Sell"_s})) << "translations are searched, too";
}

TEST_F(TranslationPage, who_types_goes_on_from_cell_to_cell_and_keys_are_for_the_cells)
{
    EXPECT_TRUE(translations().add_language(u"fr"_s).ok());
    tell();
    const auto german = [&](int row) { return cell(row, 2).toString(); };
    QApplication::setActiveWindow(&m_frame);
    m_view->setFocus();
    m_view->setCurrentIndex(m_view->model()->index(0, 2));
    const auto key = [](Qt::Key pressed, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), pressed, modifiers);
        QCoreApplication::processEvents(); // An editor takes Enter a moment later.
    };
    key(Qt::Key_K);
    key(Qt::Key_Return);
    key(Qt::Key_V);
    QTest::qWait(300); // The first is laid out while the second is typed.
    key(Qt::Key_W);
    key(Qt::Key_Return);
    EXPECT_EQ(german(0) + u'/' + german(1), u"k/vw"_s);
    m_view->setCurrentIndex(m_view->model()->index(0, 3));
    key(Qt::Key_A);
    key(Qt::Key_Tab);
    EXPECT_EQ(cell(0, 3), u"a"_s);
    EXPECT_EQ(m_view->currentIndex(), m_view->model()->index(1, 2)) << "on to the next that can be written";
    key(Qt::Key_Escape);

    m_view->selectAll();
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(u"Buy\tk\ta\n"_s));
    key(Qt::Key_Delete);
    EXPECT_EQ(german(0) + german(1), QString());
    EXPECT_EQ(core().controls().size(), 2u);
    QGuiApplication::clipboard()->setText(u"eins\tun\r\nzwei\tdeux\tbeyond\ndrei\n"_s);
    m_view->setCurrentIndex(m_view->model()->index(0, 2));
    const auto steps = m_scene->journal().step_count();
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(m_scene->journal().step_count(), steps + 1);
    EXPECT_EQ(german(0) + german(1) + cell(1, 3).toString(), u"einszweideux"_s);
}

TEST_F(TranslationPage, languages_come_and_go_and_the_chosen_one_is_previewed)
{
    m_answers.prompts = {u"fr"_s};
    click(7304);
    tell();
    EXPECT_EQ(m_view->model()->columnCount(), 4);
    type(0, 3, u"Acheter"_s);
    auto* language = static_cast<QComboBox*>(m_page->control(7301));
    language->setCurrentIndex(2);
    Q_EMIT language->activated(2);
    m_scene->play(true);
    EXPECT_EQ(core().controls()[0]->property(*core().controls()[0]->fields().find("text")), Value(u"Acheter"_s));
    EXPECT_FALSE(type(0, 3, u"x"_s) && cell(0, 3) == u"x"_s) << "a preview changes nothing";
    m_scene->play(false);
    m_view->setCurrentIndex(m_view->model()->index(0, 3));
    m_answers.buttons = {boxes::Button::Ok};
    click(7305);
    tell();
    EXPECT_EQ(translations().languages(), QStringList(u"de"_s));
    EXPECT_EQ(m_scene->language(), QString()) << "what is gone is not previewed";
}

TEST_F(TranslationPage, a_table_goes_to_a_translator_and_comes_back)
{
    const QString path = m_folder.filePath(u"texts.csv"_s);
    m_answers.files = {path};
    click(7307);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray table = file.readAll();
    file.close();
    EXPECT_TRUE(table.startsWith("\xEF\xBB\xBFobject,attribute,name,text,de\n"));
    table.replace(",buy,Buy,", ",buy,Buy,Kaufen");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(table);
    file.close();
    m_answers.files = {path};
    m_answers.buttons = {boxes::Button::Ok};
    click(7306);
    tell();
    EXPECT_EQ(cell(0, 2), u"Kaufen"_s);
    EXPECT_EQ(m_answers.texts, QStringList(u"Texts taken: 1."_s));
}

} // namespace tarn::test
