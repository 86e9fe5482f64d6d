// Automation on a page that has every kind of control, which the program's own pages need not have.

#include "automation/automation.h"
#include "core/res_handle_man.h"
#include "frame/boxes.h"
#include "frame/child_dlg.h"
#include "main_window.h"
#include "studio.h"
#include "widgets/button_st.h"
#include "widgets/report_list.h"
#include "widgets/super_edit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace boxes = tarn::boxes;

namespace {

enum Id : int { id_edit = 1, id_text, id_number, id_check, id_radio, id_combo, id_list, id_tabs, id_rows, id_button };

constexpr const char* form = R"(<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">
<layout class="QVBoxLayout" name="layout">
<item><widget class="QLineEdit" name="id_1"/></item><item><widget class="QPlainTextEdit" name="id_2"/></item>
<item><widget class="CSuperEdit" name="id_3"/></item><item><widget class="QCheckBox" name="id_4"/></item>
<item><widget class="QRadioButton" name="id_5"/></item><item><widget class="QRadioButton" name="other"/></item><item><widget class="QComboBox" name="id_6"/></item>
<item><widget class="QListWidget" name="id_7"/></item><item><widget class="QTabBar" name="id_8"/></item>
<item><widget class="Rows" name="id_9"/></item><item><widget class="CButtonST" name="id_10"/></item>
</layout></widget></ui>)";

constexpr const char* preamble = R"(
local page = studio.page("TestPage")
local edit, text, number, check, radio = page:control(1), page:control(2), page:control(3), page:control(4), page:control(5)
local combo, list, tabs, rows, button = page:control(6), page:control(7), page:control(8), page:control(9), page:control(10)
)";

class Rows : public CReportList {
public:
    explicit Rows(QWidget* parent) : CReportList(parent)
    {
        insert_column(0, QStringLiteral("Name"));
        insert_column(1, QStringLiteral("Number"), 1, Number);
        set_multi_selection(true);
        refill_list({texts, texts + 1, texts + 2});
    }
    QString get_item_caption(void* item, int column) const override
    {
        const auto* text = static_cast<const char*>(*static_cast<const char**>(item));
        return column == 0 ? QLatin1String(text) : QLatin1String(text + 1);
    }

    static inline const char* texts[] = {"a3", "b2", "c1"};
};

/// A page with one control of each kind, that notes what it hears.
class TestPage : public CChildDlg {
public:
    explicit TestPage(QWidget* parent) : CChildDlg(QStringLiteral("TestPage"), parent) {}

    template <class Widget>
    Widget& get(int id) const
    {
        return *qobject_cast<Widget*>(control(id));
    }

    QStringList heard;

protected:
    QWidget* create_widget(const QString& class_name, QWidget* parent) override
    {
        return class_name == QLatin1String("Rows") ? new Rows(parent) : nullptr;
    }
    void OnInitDialog() override
    {
        for (const char* name : {"one", "two", "three"}) {
            get<QComboBox>(id_combo).addItem(QLatin1String(name));
            get<QListWidget>(id_list).addItem(QLatin1String(name));
            get<QTabBar>(id_tabs).addTab(QLatin1String(name));
        }
        qobject_cast<QStandardItemModel*>(get<QComboBox>(id_combo).model())->item(2)->setEnabled(false);
        get<QTabBar>(id_tabs).setTabEnabled(2, false);
        get<CSuperEdit>(id_number).set_range(-10, 10, 0.5);
        on_text(id_edit, [this](const QString& text) { heard.append(QStringLiteral("text ") + text); });
        on_number(id_number, [this](double n) { heard.append(QStringLiteral("number %1").arg(n)); });
        on_choose(id_combo, [this](int index) { heard.append(QStringLiteral("combo %1").arg(index)); });
        connect(&get<QLineEdit>(id_edit), &QLineEdit::returnPressed, this,
                [this] { heard.append(QStringLiteral("enter")); });
        connect(&get<QLineEdit>(id_edit), &QLineEdit::editingFinished, this,
                [this] { heard.append(QStringLiteral("done")); });
        connect(&get<CReportList>(id_rows), &CReportList::item_double_clicked, this,
                [this](int row, int column) { heard.append(QStringLiteral("double %1 %2").arg(row).arg(column)); });
    }
};

class AutomationTest : public testing::Test {
protected:
    AutomationTest()
    {
        folder.mkdir(QStringLiteral("templates"));
        write(QStringLiteral("templates/1_TestPage.ui"), form);
        resources = std::make_unique<CResHandleMan>(folder.path());
        page = make_page(window);
        page->setGeometry(0, 0, 500, 700);
        window.show();
    }

    QString write(const QString& name, const QByteArray& content)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    TestPage* make_page(QWidget& parent)
    {
        auto* made = new TestPage(&parent);
        made->Create(1, &parent);
        return made;
    }

    /// Runs a script that knows the page and its controls; answers its error with the traceback.
    std::string run(const QByteArray& script)
    {
        const QString path = write(QStringLiteral("script.lua"), preamble + script);
        Automation automation(studio, window);
        testing::internal::CaptureStderr();
        const int status = automation.run(path, {});
        const std::string error = testing::internal::GetCapturedStderr();
        EXPECT_EQ(status != 0, error.find("stack traceback") != std::string::npos) << error;
        return status == 0 ? "" : error;
    }

    QTemporaryDir directory;
    QDir folder{directory.path()};
    std::unique_ptr<CResHandleMan> resources;
    Studio studio;
    MainWindow window{studio};
    TestPage* page = nullptr;
};

} // namespace

TEST_F(AutomationTest, types_texts_as_one_change_each)
{
    EXPECT_EQ(run("edit:set_text('abc') edit:set_text('雾') assert(edit:focused() and edit:text() == '雾')\n"
                  "edit:set_text('') edit:enter() edit:set_text('z') edit:blur() assert(not edit:focused())\n"
                  "text:set_text('one\\ntwo') assert(text:text() == 'one\\ntwo')"),
              "");
    const QStringList expected{QStringLiteral("text abc"), QStringLiteral("text 雾"), QStringLiteral("text "),
                               QStringLiteral("enter"),    QStringLiteral("done"),    QStringLiteral("text z"),
                               QStringLiteral("done")};
    EXPECT_EQ(page->heard, expected) << page->heard.join(u',').toStdString();
    page->get<QLineEdit>(id_edit).setReadOnly(true);
    EXPECT_NE(run("edit:set_text('x')").find("control 1 is read-only"), std::string::npos);
}

TEST_F(AutomationTest, types_numbers)
{
    EXPECT_EQ(run("local min, max, step = number:range() assert(min == -10 and max == 10 and step == 0.5)\n"
                  "assert(number:value() == nil)\n"
                  "number:set_value(2.5) assert(number:value() == 2.5)\n"
                  "number:set_value(1e6) assert(number:value() == 10)\n"
                  "number:set_text('-') assert(number:value() == 10)\n"
                  "number:blur() assert(number:text() == '10')"),
              "");
    EXPECT_EQ(page->heard, QStringList({QStringLiteral("number 2.5"), QStringLiteral("number 10")}));
}

TEST_F(AutomationTest, marks_and_chooses_as_the_mouse_does)
{
    page->get<QCheckBox>(id_check).setTristate(true);
    page->get<QCheckBox>(id_check).setCheckState(Qt::PartiallyChecked);
    EXPECT_EQ(run("assert(check:checked() == nil) check:set_checked(false) assert(check:checked() == false)\n"
                  "check:set_checked(true) assert(check:checked()) radio:click() assert(radio:checked())\n"
                  "combo:choose(1) combo:choose(1) assert(combo:index() == 1 and combo:text() == 'two')\n"
                  "list:choose(2) assert(list:index() == 2) tabs:choose(1) assert(tabs:index() == 1)\n"
                  "assert(#combo:items() == 3 and list:items()[3] == 'three')"),
              "");
    EXPECT_EQ(page->heard, QStringList({QStringLiteral("combo 1"), QStringLiteral("combo 1")}));
    EXPECT_NE(run("combo:choose(2)").find("control 6 does not let entry 2 be chosen"), std::string::npos);
    EXPECT_NE(run("tabs:choose(2)").find("control 8 does not let entry 2 be chosen"), std::string::npos);
    // An exclusive button cannot be unchecked by clicks.
    EXPECT_NE(run("radio:set_checked(false)").find("control 5 stays checked"), std::string::npos);
}

TEST_F(AutomationTest, works_on_rows_of_report_lists)
{
    EXPECT_EQ(run("assert(rows:rows()[2][2] == '2' and rows:columns()[1] == 'Name' and #rows:icons() == 3)\n"
                  "rows:select(2, 0) local s = rows:selected() assert(#s == 2 and s[1] == 0 and s[2] == 2)\n"
                  "rows:click_cell(1, 1, 'shift') assert(#rows:selected() == 3)\n"
                  "rows:double_click(1) assert(#rows:selected() == 1)\n"
                  "rows:select() assert(#rows:selected() == 0)"),
              "");
    EXPECT_EQ(page->heard, QStringList(QStringLiteral("double 1 0")));
    page->get<CReportList>(id_rows).setMaximumHeight(50);
    EXPECT_NE(run("rows:click_cell(-1, 0)").find("control 9 shows no empty space"), std::string::npos);
}

TEST_F(AutomationTest, answers_every_kind_of_box)
{
    auto* button = &page->get<CButtonST>(id_button);
    QObject::connect(button, &QPushButton::clicked, page, [this] {
        const auto color = boxes::color(page, Qt::red);
        const auto text = boxes::prompt(page,
                                        {.text = QStringLiteral("name"), .title = {}, .initial = {}, .max_length = 3});
        const int command = boxes::menu(
            page, {.items = {{7, QStringLiteral("off"), false}, {}, {8, QStringLiteral("on")}}, .place = {}});
        page->heard.append(color ? color->name() : QString());
        page->heard.append(text.value_or(QStringLiteral("-")) + QString::number(command));
    });
    EXPECT_EQ(run("studio.answer({1, 2, 255}, 'abc', 8) button:click()\n"
                  "local b = studio.boxes() assert(b[1].initial[1] == 255 and b[1].answer[3] == 255)\n"
                  "assert(#b[3].items == 2 and b[3].items[1].enabled == false and b[3].items[2].id == 8)\n"
                  "studio.answer(false, false, 0) button:click()"),
              "");
    EXPECT_EQ(page->heard,
              QStringList({QStringLiteral("#0102ff"), QStringLiteral("abc8"), QString(), QStringLiteral("-0")}));
    EXPECT_NE(run("studio.answer(false, 'abcd', 0) button:click()").find("takes at most 3 characters"),
              std::string::npos);
    EXPECT_NE(run("studio.answer(false, 'a', 7) button:click()").find("has no enabled command 7"), std::string::npos);
    // The first of several failures is told; the boxes after it get harmless answers.
    EXPECT_NE(run("button:click()").find("no answer is queued for the colour chooser"), std::string::npos);
    EXPECT_EQ(run("assert(not pcall(button.click, button)) studio.process()"), ""); // told once
}

TEST_F(AutomationTest, runs_a_function_in_a_modal_dialog)
{
    QObject::connect(&page->get<CButtonST>(id_button), &QPushButton::clicked, page, [this] {
        QDialog dialog(&window);
        QVBoxLayout layout(&dialog);
        auto* inside = new TestPage(&dialog);
        inside->Create(1, &dialog);
        inside->setObjectName(QStringLiteral("inside"));
        layout.addWidget(inside);
        QObject::connect(&inside->get<CButtonST>(id_button), &QPushButton::clicked, &dialog, &QDialog::accept);
        page->heard.append(QString::number(boxes::dialog(dialog)));
    });
    EXPECT_EQ(run("local inner\n"
                  "studio.answer(function(p)\n"
                  "    inner = p\n"
                  "    assert(p ~= page and not pcall(button.click, button))\n"
                  "    assert(select(2, pcall(button.click, button)):find('page TestPage is blocked', 1, true))\n"
                  "    p:control(1):set_text('x') assert(p:control(1):text() == 'x')\n"
                  "    p:control(10):click() assert(not p:visible())\n"
                  "end)\n"
                  "button:click()\n"
                  "assert(studio.boxes()[1].answer == 'ok' and select(2, pcall(inner.visible, inner)):find('page "
                  "TestPage is gone', 1, true))"),
              "");
    EXPECT_NE(run("studio.answer(function(p) end) button:click()").find("was left open"), std::string::npos);
    EXPECT_NE(run("studio.answer(function(p) error('stop here') end) button:click()").find("stop here"),
              std::string::npos);
    EXPECT_NE(run("button:click()").find("no answer is queued for the dialog \"TestPage\""), std::string::npos);
    EXPECT_EQ(
        run("coroutine.wrap(function() studio.answer(function(p) p:control(10):click() end) button:click() end)()"),
        "");
    EXPECT_EQ(page->heard.join(u' '), QStringLiteral("1 0 0 0 1"));
}

TEST_F(AutomationTest, handles_survive_what_they_stand_for)
{
    QObject::connect(&page->get<CButtonST>(id_button), &QPushButton::clicked, page, [this] { page->deleteLater(); });
    EXPECT_NE(run("button:click() local ok, m = pcall(page.visible, page) assert(not ok)\n"
                  "collectgarbage() edit:text()")
                  .find("page TestPage is gone"),
              std::string::npos);
}
