#include "address_permissions.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "support/queued_answers.h"
#include "support/run_until.h"

#include <QTemporaryDir>
#include <QWidget>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarn::test;
using tarn::boxes::Button;

namespace {

class Permissions : public testing::Test {
protected:
    Permissions() { start(true); }
    ~Permissions() override { VLCMsgIniW::set_language(tarn::Language::Chinese); }
    void start(bool with_window)
    {
        m_permissions.reset();
        m_permissions = std::make_unique<AddressPermissions>(m_world, m_folder.filePath(u"preset.ini"_s));
        if (with_window)
            m_permissions->set_window(&m_window);
        m_permissions->set_running(true);
    }
    void ask(const QStringList& addresses)
    {
        m_permissions->ask(addresses);
        run_for(30);
    }
    qsizetype boxes() const { return m_answers.texts.size(); }

    QTemporaryDir m_folder;
    CBaseWorld m_world;
    QWidget m_window;
    QueuedAnswers m_answers;
    std::unique_ptr<AddressPermissions> m_permissions;
};

const QString first = u"http://a.example/first.swf?id=1,2;3"_s;
const QString second = u"https://b.example:8443/%20second.swf"_s;

} // namespace

TEST_F(Permissions, are_asked_for_in_one_box_and_kept_for_exactly_these_addresses)
{
    EXPECT_EQ(m_world.address_gate(), m_permissions.get());
    m_answers.buttons.push_back(Button::Yes);
    m_permissions->ask({second});
    EXPECT_EQ(boxes(), 0) << "not while something is drawn";
    ask({first, second, first});
    ASSERT_EQ(boxes(), 1);
    for (const QString& part : {first, second, u"\nb.example:8443\n"_s})
        EXPECT_TRUE(m_answers.texts[0].contains(part)) << m_answers.texts[0].toStdString();
    for (int i = 0; i < 2; ++i, start(false)) {
        EXPECT_TRUE(m_permissions->is_allowed(first) && m_permissions->is_allowed(second));
        for (const QString& other : {u"http://a.example/first.swf"_s, u"https://a.example/first.swf?id=1,2;3"_s,
                                     u"http://a.example:81/first.swf?id=1,2;3"_s, u"http://a.example/"_s})
            EXPECT_FALSE(m_permissions->is_allowed(other));
    }
}

TEST_F(Permissions, once_declined_are_not_asked_for_again_before_the_next_preview)
{
    m_answers.buttons.push_back(Button::No);
    ask({first});
    ask({first});
    ask({second});
    EXPECT_EQ(boxes(), 1);
    m_permissions->set_running(false);
    m_permissions->set_running(true);
    m_answers.buttons.push_back(Button::Yes);
    ask({first});
    EXPECT_TRUE(m_permissions->is_allowed(first));
    ask({first});
    EXPECT_EQ(boxes(), 2) << "it is allowed";
    m_permissions->ask({second});
    m_permissions->set_running(false);
    run_for(30);
    EXPECT_EQ(boxes(), 2) << "the preview ended before the box came";
}

TEST_F(Permissions, cover_nothing_that_the_box_did_not_show)
{
    QStringList many;
    for (int i = 0; i < 15; ++i)
        many << u"http://host%1.example/"_s.arg(i) + QString(i * 60, u'x');
    m_answers.buttons = {Button::Yes, Button::Yes, Button::Yes, Button::Yes, Button::Yes, Button::Yes, Button::No};
    ask(many);
    for (const QString& address : many)
        EXPECT_EQ(m_permissions->is_allowed(address), m_answers.texts.mid(0, 6).join(u'\n').contains(address + u'\n'));
    for (const QString& text : m_answers.texts) {
        EXPECT_LT(text.size(), 2000) << "all of it is shown";
        EXPECT_LE(text.count(u'\n'), 28);
    }
    QStringList short_ones;
    for (int i = 0; i < 12; ++i)
        short_ones << u"http://short%1.example/intro.swf"_s.arg(i);
    m_permissions->set_running(true);
    m_answers.texts.clear();
    m_answers.buttons = {Button::No};
    ask(short_ones);
    EXPECT_EQ(boxes(), 1) << "as many as can play have room in one";
}

TEST_F(Permissions, are_taken_back_also_by_another_program_and_players_are_not_asked)
{
    m_permissions->set_allowed({first, second}, true);
    const int before = m_permissions->revision();
    {
        CBaseWorld other_world;
        AddressPermissions other(other_world, m_folder.filePath(u"preset.ini"_s));
        other.set_allowed({first}, false);
    }
    m_permissions->set_running(false);
    m_permissions->set_running(true);
    EXPECT_FALSE(m_permissions->is_allowed(first));
    EXPECT_TRUE(m_permissions->is_allowed(second));
    EXPECT_NE(m_permissions->revision(), before);
    start(false);
    EXPECT_FALSE(m_permissions->can_ask());
    ask({first});
    EXPECT_EQ(boxes(), 0);
}
