#include "core/authored.h"
#include "mouse_fixture.h"

#include "gui_core/dxut_menu.h"
#include "gui_scene/package_writer.h"
#include "gui_scene/translations/translations.h"
#include "support/gui_fixture.h"
#include "support/package_texts.h"
#include "tools/control_clipboard.h"
#include "tools/control_commands.h"

using namespace tarn;
using namespace tarn::test;
using Editor = GuiSceneEditor;

namespace {

class ClipboardTest : public MouseToolsTest {
protected:
    CDXUTPicture* picture(CDXUTDialog* home, const QString& image)
    {
        auto* made = static_cast<CDXUTPicture*>(control(DXUT_CONTROL_PICTURE, home, {5, 5, 10, 10}, u"pic"_s));
        (void)set(*made, "image", image);
        return made;
    }
    void add_function(const QString& name, const QString& body)
    {
        ASSERT_TRUE(m_scene.functions().set_function(name, body).ok());
    }
    QByteArray copied(const std::vector<CDXUTControl*>& controls) { return clipboard_text(m_scene, controls); }
};

/// A control's text without what a copy does not share.
QByteArray content_of_control(const CDXUTControl& control)
{
    std::unique_ptr<ObjectState> state(Authored::state(control).clone());
    state->id = 0;
    state->parent = {};
    JsonWriter writer;
    write_state(*state, writer);
    return QByteArray::fromStdString(writer.text());
}

} // namespace

TEST_F(ClipboardTest, every_type_comes_back_as_it_was_with_a_new_id)
{
    CDXUTDialog* d = home();
    std::vector<CDXUTControl*> originals;
    for (const ControlClass& row : control_classes())
        originals.push_back(control(row.type, d, QRectF(row.type * 3, 7.5, 20, 10), u"名 \"%1\""_s.arg(row.type)));
    originals.front()->set_align_type(4);
    originals.back()->set_locked(true);
    const QByteArray text = copied(originals);
    QByteArrayList wanted;
    for (const CDXUTControl* c : originals)
        wanted << content_of_control(*c);
    m_scene.new_scene();
    CDXUTDialog* other = home();
    core().SelectDialog(other, false);
    ASSERT_TRUE(paste_text(m_scene, text).ok());
    QByteArrayList pasted;
    QSet<quint32> ids;
    for (const CDXUTControl* c : selected()) {
        pasted << content_of_control(*c);
        ids.insert(c->id());
        EXPECT_EQ(c->dialog(), other);
    }
    EXPECT_EQ(pasted, wanted) << "and in the same layers";
    EXPECT_EQ(ids.size(), other->GetControlNum());
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(other->GetControlNum(), 0);
}

TEST_F(ClipboardTest, pasting_again_steps_aside_and_a_root_takes_what_no_dialog_does)
{
    CDXUTDialog* d = home();
    CDXUTControl* c = button(d, {20, 30, 40, 20});
    const QByteArray original = content_of_control(*c);
    core().SelectControl(c, false);
    EXPECT_TRUE(run(Editor::copy).ok());
    EXPECT_FALSE(m_scene.journal().can_undo()) << "copying changes nothing";
    EXPECT_TRUE(run(Editor::paste).ok());
    EXPECT_TRUE(run(Editor::paste).ok());
    EXPECT_EQ(d->controls().last()->rect(), QRectF(40, 50, 40, 20));
    EXPECT_EQ(d->controls().last()->name(), c->name());
    EXPECT_EQ(undo_all(), 2);
    core().SelectControl(c, false);
    EXPECT_TRUE(run(Editor::cut).ok());
    EXPECT_TRUE(run(Editor::paste).ok());
    EXPECT_EQ(content_of_control(*d->controls().first()), original) << "the same place when it is free";
    core().ClearCtrlSelection();
    core().ClearDialogSelection();
    EXPECT_TRUE(run(Editor::paste).ok());
    EXPECT_EQ(core().GetRootDialog()->controls().first()->rect(), QRectF(20, 30, 40, 20));
}

TEST_F(ClipboardTest, controls_open_their_menu_again_where_it_is_and_no_other_one)
{
    CDXUTDialog* d = home();
    CDXUTControl* c = button(d, {20, 30, 40, 20});
    CDXUTMenu* menu = core().create_menu(u"Mine"_s);
    (void)set(*c, "click_menu", ObjectRef{menu->id()});
    const QByteArray text = copied({c});
    const auto pasted_menu = [&] {
        EXPECT_TRUE(paste_text(m_scene, text).ok());
        return std::get<ObjectRef>(get(*selected().front(), "click_menu")).id;
    };
    EXPECT_EQ(pasted_menu(), menu->id());
    (void)set(*menu, "name", u"Another with this id"_s);
    EXPECT_EQ(pasted_menu(), 0u);
}

TEST_F(ClipboardTest, pictures_come_along_into_another_scene_and_are_renamed_when_their_name_is_taken)
{
    CDXUTDialog* d = home();
    for (const QString& name : {u"same.png"_s, u"differs.png"_s, u"unused.png"_s})
        core().set_texture(name, "theirs");
    const QByteArray text = copied(
        {picture(d, u"same.png"_s), picture(d, u"differs.png"_s), picture(d, u"missing.png"_s)});
    EXPECT_FALSE(text.contains("unused.png"));
    m_scene.new_scene();
    core().set_texture(u"same.png"_s, "theirs");
    core().set_texture(u"differs.png"_s, "ours");
    core().document().forget_history();
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(paste_text(m_scene, text).ok());
        QStringList images;
        for (const CDXUTControl* c : selected())
            images << static_cast<const CDXUTPicture*>(c)->image();
        EXPECT_EQ(images.join(u' '), u"same.png differs-2.png missing.png"_s) << "the renamed one is found again";
    }
    EXPECT_EQ(core().document().files().keys().join(u' '),
              u"textures/differs-2.png textures/differs.png textures/same.png"_s);
    EXPECT_EQ(core().document().files().value(u"textures/differs.png"_s), "ours");
    EXPECT_EQ(undo_all(), 2);
    EXPECT_EQ(core().document().files().size(), 2);
}

TEST_F(ClipboardTest, texts_that_are_not_ours_are_refused_and_change_nothing)
{
    home();
    const QByteArray before = text();
    const QByteArray control = R"({"type":0,"x":1})";
    const auto with = [](const QByteArray& controls, const QByteArray& rest = {}) {
        return R"({"format":1,"controls":[)" + controls + "]" + rest + "}";
    };
    const QByteArray hostile[] = {
        "",
        "[]",
        "{}",
        "{\"format\":1",
        "\xff\xfe",
        with(""),
        R"({"controls":[)" + control + "]}",
        R"({"format":2,"controls":[)" + control + "]}",
        R"({"format":"1","controls":[)" + control + "]}",
        with(R"({"x":1})"),
        with(R"({"type":7})"),
        with(R"({"type":-1})"),
        with(R"({"type":0,"x":"left"})"),
        with(R"({"type":0,"x":1e999})"),
        with("7"),
        with(control + "," + QByteArray(5000, '[')),
        with(control, R"(,"pictures":{"textures/../../a.png":""})"),
        with(control, R"(,"pictures":{"manifest.json":""})"),
        with(control, R"(,"pictures":{"textures/a.png":"not base64!"})"),
        with(control, R"(,"pictures":{"textures/a.png":7})"),
        with(control, R"(,"pictures":{"textures/a.png":"","textures/a.png":""})"),
        with(control, R"(,"pictures":[])"),
        R"({"format":1,"dialogs":7})",
        R"({"format":1,"dialogs":{"scene.json":{}}})",
        R"({"format":1,"dialogs":{"scene.json":{"dialogs":[{"id":0}]}}})",
        R"({"format":1,"dialogs":{"scene.json":{"dialogs":[{"id":5},{"id":5}]}}})",
    };
    for (const QByteArray& text_of_others : hostile) {
        const auto status = paste_text(m_scene, text_of_others);
        EXPECT_FALSE(status.ok()) << text_of_others.left(80).toStdString();
        EXPECT_FALSE(status.message().isEmpty());
    }
    EXPECT_TRUE(same_text(text(), before));
    EXPECT_FALSE(m_scene.journal().can_undo());
    EXPECT_TRUE(paste_text(m_scene, with(control)).ok());
    EXPECT_TRUE(paste_text(m_scene, with(R"({"type":0,"id":1,"dialog":99,"width":-5,"glow":"later"})")).ok())
        << "ids are not taken over, numbers are held to their range, what is not known is kept";
    EXPECT_EQ(selected().front()->width(), 0);
    EXPECT_TRUE(all_texts(m_scene.gui_core()).contains("\"glow\":\"later\""));
}

TEST_F(ClipboardTest, duplicates_stay_in_their_dialogs_and_leave_the_clipboard_alone)
{
    CDXUTDialog* d = home();
    CDXUTControl* a = button(d, {20, 30, 40, 20});
    CDXUTControl* b = button(core().GetRootDialog(), {50, 60, 40, 20});
    core().SelectControl(a, false);
    EXPECT_TRUE(run(Editor::copy).ok());
    core().SelectControl(b, true);
    EXPECT_TRUE(run(Editor::duplicate).ok());
    EXPECT_EQ(d->controls().last()->rect(), QRectF(30, 40, 40, 20));
    EXPECT_EQ(core().GetRootDialog()->controls().last()->rect(), QRectF(60, 70, 40, 20));
    EXPECT_EQ(undo_all(), 1);
    core().SelectDialog(d, false);
    EXPECT_TRUE(run(Editor::paste).ok());
    EXPECT_EQ(selected().size(), 1u);
}

TEST_F(ClipboardTest, what_controls_say_in_other_languages_comes_along)
{
    CDXUTDialog* d = home();
    CDXUTControl* a = button(d, {20, 30, 40, 20});
    CDXUTControl* other = button(d, {90, 30, 40, 20});
    for (CDXUTControl* control : {a, other})
        EXPECT_TRUE(set(*control, "text", u"Buy"_s));
    const auto text_of = [](CDXUTControl& control) {
        return SeenText{.object = &control, .field = control.fields().find("text"), .in_list = false, .text = u"Buy"_s};
    };
    const auto german = [&](CDXUTControl* control) { return m_scene.translations().text(text_of(*control), u"de"_s); };
    EXPECT_TRUE(m_scene.translations().add_language(u"de"_s).ok());
    m_scene.translations().set_text(text_of(*a), u"de"_s, u"Kaufen"_s);
    m_scene.translations().set_text(text_of(*other), u"de"_s, u"Nehmen"_s);
    core().document().forget_history();
    core().SelectControl(a, false);
    EXPECT_TRUE(run(Editor::duplicate).ok());
    EXPECT_EQ(german(d->controls().last()), u"Kaufen"_s);
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(content_to_save(core()).objects[core().document().kind("texts")->place].size(), 2u);

    const QByteArray copy = copied({a});
    core().SelectDialog(d, false);
    EXPECT_TRUE(run(Editor::duplicate).ok());
    EXPECT_EQ(german(core().GetDialogs().last()->controls().last()), u"Nehmen"_s);
    m_scene.RemoveDialog(d);
    EXPECT_EQ(content_to_save(core()).objects[core().document().kind("texts")->place].size(), 2u)
        << "what is gone is not saved";
    m_scene.new_scene();
    EXPECT_TRUE(paste_text(m_scene, copy).ok());
    EXPECT_EQ(german(core().GetRootDialog()->controls().last()), u"Kaufen"_s);
    EXPECT_EQ(m_scene.translations().languages(), QStringList(u"de"_s));
}

TEST_F(ClipboardTest, dialogs_go_with_their_controls_pictures_and_scripts_into_another_scene)
{
    dialog({0, 0, 50, 50}, u"below"_s);
    CDXUTDialog* d = home();
    core().set_texture(u"a.png"_s, "theirs");
    picture(d, u"a.png"_s);
    CDXUTControl* c = button(d, {20, 30, 40, 20});
    add_function(CEventManager::new_function_name(c->id(), EVENT_BUTTON_CLICKED), u"return 1"_s);
    add_function(d->get_func_str(EVENT_DIALOG_CLOSED), u"return 2"_s);
    m_scene.events().CreateEventW(c->id(), EVENT_BUTTON_CLICKED,
                                  CEventManager::new_function_name(c->id(), EVENT_BUTTON_CLICKED));
    core().document().forget_history();
    const QByteArray before = text();
    core().SelectDialog(d, false);
    EXPECT_TRUE(run(Editor::cut).ok());
    EXPECT_EQ(core().GetDialogs().size(), 1);
    EXPECT_FALSE(core().texture_names().contains(u"a.png"_s));
    EXPECT_EQ(undo_all(), 1);
    EXPECT_TRUE(same_text(text(), before));
    EXPECT_EQ(core().selection().dialogs, std::vector{d});

    m_scene.new_scene();
    core().set_texture(u"a.png"_s, "ours");
    core().create_dialog({0, 0, 10, 10});
    core().document().forget_history();
    const QByteArray other_before = text();
    EXPECT_TRUE(run(Editor::paste).ok());
    ASSERT_EQ(core().GetDialogs().size(), 2);
    CDXUTDialog* pasted = core().GetDialogs().last();
    EXPECT_EQ(core().selection().current_dialog, pasted);
    EXPECT_EQ(pasted->name() + u' ' + pasted->controls().first()->name(), u"home pic"_s);
    EXPECT_EQ(get(*pasted->controls().first(), "image"), Value(u"a-2.png"_s));
    const CGuiEvent* event = m_scene.events().GetFunc(pasted->controls().last()->id(), EVENT_BUTTON_CLICKED);
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(m_scene.functions().find_function(event->function())->text(), u"return 1"_s);
    EXPECT_EQ(m_scene.functions().find_function(pasted->get_func_str(EVENT_DIALOG_CLOSED))->text(), u"return 2"_s);
    EXPECT_EQ(undo_all(), 1);
    EXPECT_TRUE(same_text(text(), other_before)) << "the scripts go too";
}

TEST_F(ClipboardTest, copies_of_a_dialog_have_names_places_and_functions_of_their_own)
{
    CDXUTDialog* d = dialog({100, 100, 200, 100});
    CDXUTControl* made = button(d, {10, 10, 20, 20});
    CDXUTControl* shared = button(d, {40, 10, 20, 20});
    const QString own = CEventManager::new_function_name(made->id(), EVENT_BUTTON_CLICKED);
    add_function(own, u"return 1"_s);
    add_function(u"both"_s, u"return 2"_s);
    m_scene.events().CreateEventW(made->id(), EVENT_BUTTON_CLICKED, own);
    m_scene.events().CreateEventW(shared->id(), EVENT_BUTTON_CLICKED, u"both"_s);
    core().document().forget_history();
    core().SelectDialog(d, false);
    EXPECT_TRUE(run(Editor::copy).ok());
    for (const int command : {Editor::duplicate, Editor::paste}) {
        core().SelectDialog(d, false);
        EXPECT_TRUE(run(command).ok());
        CDXUTDialog* copy = core().selection().current_dialog;
        ASSERT_EQ(core().GetDialogs(), (QList{d, copy}));
        EXPECT_EQ(copy->name(), u"Dialog2"_s);
        EXPECT_EQ(copy->rect(), d->rect().translated(10, 10));
        QSet<QString> called{own, u"both"_s};
        for (const CDXUTControl* control : copy->controls()) {
            const CGuiEvent* event = m_scene.events().GetFunc(control->id(), EVENT_BUTTON_CLICKED);
            ASSERT_NE(event, nullptr);
            EXPECT_TRUE(m_scene.functions().find_function(event->function())) << event->function().toStdString();
            called.insert(event->function());
        }
        EXPECT_EQ(called.size(), 4);
        EXPECT_EQ(undo_all(), 1);
        EXPECT_EQ(m_scene.functions().functions().size(), 2u);
    }
}

TEST_F(ClipboardTest, duplicates_call_the_functions_of_their_originals_as_long_as_they_are_there)
{
    CDXUTControl* original = button(home(), {10, 10, 50, 20});
    m_scene.events().CreateEventW(original->id(), EVENT_BUTTON_CLICKED, u"greet"_s);
    core().SelectControl(original, false);
    ASSERT_TRUE(run(GuiSceneEditor::duplicate));
    const quint32 copy = core().selection().current_control->id();
    ASSERT_NE(copy, original->id());
    ASSERT_NE(m_scene.events().GetFunc(copy, EVENT_BUTTON_CLICKED), nullptr);
    EXPECT_EQ(m_scene.events().GetFunc(copy, EVENT_BUTTON_CLICKED)->function(), u"greet"_s);
    EXPECT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(m_scene.events().events().size(), 1U);
    EXPECT_TRUE(m_scene.journal().redo());
    EXPECT_EQ(m_scene.events().events().size(), 2U);
}
