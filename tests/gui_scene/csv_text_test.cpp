#include "gui_scene/translations/csv_text.h"
#include "gui_scene/translations/translations.h"
#include "support/attributes.h"
#include "support/scene_fixture.h"

#include <QStringEncoder>

using namespace tarn;
using namespace tarn::test;

namespace {

using Rows = std::vector<QStringList>;

Rows read(const QString& text)
{
    const auto rows = csv_rows(text);
    EXPECT_TRUE(rows.ok());
    return rows ? rows.value() : Rows();
}

} // namespace

TEST(CsvText, WhatIsWrittenIsReadTheSame)
{
    const Rows rows{
        {u"a"_s, u"with, comma"_s, u"\"quoted\""_s}, {u"two\nlines"_s, {}, u"半角;tab\t"_s}, {u"x"_s, {}, {}}};
    EXPECT_EQ(read(csv_text(rows)), rows);
    EXPECT_EQ(read(u"\ufeffa;b\r\n1;\"x;\"\"y\"\r\n"_s), (Rows{{u"a"_s, u"b"_s}, {u"1"_s, u"x;\"y"_s}}));
    EXPECT_EQ(read(u"a\tb\tc,d"_s), (Rows{{u"a"_s, u"b"_s, u"c,d"_s}})) << "what the first line has most of";
}

TEST(CsvText, HostileTablesAreRefused)
{
    EXPECT_FALSE(csv_rows(u"a,\"b\n"_s).ok());
    EXPECT_FALSE(csv_rows(QString(2'000'001, u',')).ok());
    EXPECT_EQ(read({}), Rows());
    EXPECT_EQ(read(u"\n\n"_s).size(), 2u);
}

class TranslationFileTest : public SceneTest {
protected:
    TranslationFileTest()
    {
        CDXUTDialog* box = dialog({10, 10, 300, 200}, u"box"_s);
        m_button = control(DXUT_CONTROL_BUTTON, box, {10, 10, 60, 24}, u"buy"_s);
        EXPECT_TRUE(set(*box, "caption", QString()));
        EXPECT_TRUE(set(*m_button, "text", u"Buy, now"_s));
        EXPECT_TRUE(translations().add_language(u"de"_s).ok());
        m_scene.journal().clear();
    }
    Translations& translations() { return m_scene.translations(); }
    Document& document() { return core().document(); }

    CDXUTControl* m_button = nullptr;
};

TEST_F(TranslationFileTest, ATranslatorsTableComesBackInOneStep)
{
    QString table = exported_translations(document(), translations());
    const QString id = QString::number(m_button->id());
    EXPECT_EQ(table, u"object,attribute,name,text,de\n"_s + id + u",text,buy,\"Buy, now\",\n"_s);
    table = u"object,attribute,name,text,de,fr\n"_s + id + u",text,buy,\"Buy, now\",Kaufen,Acheter\n"_s + id
        + u",text,buy,Another,Anders,\n999,text,gone,Buy,x,y\n"_s + id + u",x,buy,Buy,1,2\n"_s;
    const auto imported = import_translations(document(), translations(), table.toUtf8());
    ASSERT_TRUE(imported.ok());
    EXPECT_EQ(imported.value().taken, 2);
    EXPECT_EQ(imported.value().left_out, 3) << "rows of other texts are left alone";
    EXPECT_EQ(imported.value().first_left_out, 3);
    EXPECT_EQ(translations().languages(), QStringList({u"de"_s, u"fr"_s}));
    EXPECT_EQ(translations().text(seen_texts(document()).front(), u"fr"_s), u"Acheter"_s);
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(translations().languages(), QStringList({u"de"_s}));
    EXPECT_FALSE(m_scene.journal().undo());
    QStringEncoder wide(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
    table.replace(u',', u'\t').replace(u"Buy\t now"_s, u"Buy, now"_s);
    EXPECT_EQ(import_translations(document(), translations(), wide(table)).value().taken, 2)
        << "a spreadsheet's own way";
}

TEST_F(TranslationFileTest, WhatIsNoSuchTableChangesNothing)
{
    const QByteArray before = text();
    for (const QByteArray& table :
         {QByteArray(), QByteArray("name,text\n"), QByteArray("object,attribute,name,text,\n"),
          QByteArray("object,attribute,name,text,fr,fr\n"),
          QByteArray("object,attribute,name,text,fr\n1,text,x,y,\xE9t\xE9\n"),
          "object,attribute,name,text," + QByteArray(100, 'x') + "\n"})
        EXPECT_FALSE(import_translations(document(), translations(), table).ok()) << table.toStdString();
    EXPECT_EQ(text(), before);
    EXPECT_FALSE(m_scene.journal().undo());
}
