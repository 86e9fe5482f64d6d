#pragma once

#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/child_dlg.h"
#include "frame/cmd_test.h"
#include "frame/script_edit.h"
#include "script/config_scene.h"
#include "script/script_runtime.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace tarn::test {

using namespace Qt::StringLiterals;

/// Lets the test use the open dialog, and answers the question whether to discard.
class Author : public boxes::Responder {
public:
    Author() { boxes::set_responder(this); }
    ~Author() override { boxes::set_responder(nullptr); }

    boxes::Button message(QWidget*, const boxes::Message&) override
    {
        ++questions;
        return questions > refusals ? boxes::Button::Ok : boxes::Button::Cancel;
    }
    std::optional<QString> prompt(QWidget*, const boxes::Prompt&) override { return {}; }
    QString file(QWidget*, const boxes::File&) override { return {}; }
    int menu(QWidget*, const boxes::Menu&) override { return 0; }
    std::optional<QColor> color(QWidget*, const QColor&) override { return {}; }
    int dialog(QDialog& dialog) override
    {
        QTimer::singleShot(0, &dialog, [&] {
            dialog.activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
            work(*dialog.findChild<CChildDlg*>());
            dialog.done(dialog.result());
        });
        return dialog.exec();
    }

    std::function<void(CChildDlg&)> work;
    int questions = 0;
    int refusals = 0; ///< how many of the first questions are answered with Cancel
};

/// The script editor, open on the function "f".
class ScriptEditor : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_world.config_scene().set_function(u"f"_s, u"x = 1"_s)); }

    int edit(std::function<void(CChildDlg&)> work, int line = -1)
    {
        m_author.work = std::move(work);
        return CDlgCmdTest::do_modal(u"f"_s, &m_world, nullptr, line);
    }
    QString text() { return m_world.config_scene().find_function(u"f"_s)->text(); }

    static CScriptEdit& script(CChildDlg& page) { return *qobject_cast<CScriptEdit*>(page.control(6601)); }
    static QLineEdit& field(CChildDlg& page, int id) { return *qobject_cast<QLineEdit*>(page.control(id)); }
    static QString label(CChildDlg& page, int id) { return qobject_cast<QLabel*>(page.control(id))->text(); }
    static void click(CChildDlg& page, int id) { qobject_cast<QAbstractButton*>(page.control(id))->click(); }
    static QAbstractItemModel& log(CChildDlg& page) { return *qobject_cast<QListView*>(page.control(6613))->model(); }
    static QStringList logged(CChildDlg& page)
    {
        QStringList rows;
        for (int row = 0; row < log(page).rowCount(); ++row)
            rows.append(log(page).index(row, 0).data().toString());
        return rows;
    }
    /// What the author types: letters, and Enter for each \n.
    static void type(QWidget& widget, const QString& keys)
    {
        for (const QChar c : keys)
            c == u'\n' ? QTest::keyClick(&widget, Qt::Key_Return) : QTest::keyClick(&widget, c.toLatin1());
    }

    CBaseWorld m_world;
    Author m_author;
};

} // namespace tarn::test
