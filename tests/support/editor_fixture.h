#pragma once

#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/gui_child_dlg.h"
#include "shell/gui_ui.h"

#include <QDialog>
#include <QMainWindow>
#include <QStackedWidget>
#include <QTimer>

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace tarn::test {

using namespace Qt::StringLiterals;

/// Answers boxes from a queue and keeps what they said; a box without an answer fails the test.
class QueuedAnswers : public boxes::Responder {
public:
    QueuedAnswers() { boxes::set_responder(this); }
    ~QueuedAnswers() override { boxes::set_responder(nullptr); }

    boxes::Button message(QWidget*, const boxes::Message& box) override
    {
        texts.append(box.text);
        titles.append(box.title);
        return take(buttons, boxes::Button::Cancel);
    }
    std::optional<QString> prompt(QWidget*, const boxes::Prompt& box) override
    {
        texts.append(box.text);
        return take(prompts, std::optional<QString>());
    }
    QString file(QWidget*, const boxes::File& box) override
    {
        filters.append(box.filter);
        return take(files, QString());
    }
    int menu(QWidget*, const boxes::Menu& menu) override
    {
        for (const boxes::MenuItem& item : menu.items)
            texts.append(u"%1 %2"_s.arg(item.id).arg(item.text));
        return take(commands, 0);
    }
    std::optional<QColor> color(QWidget*, const QColor& initial) override
    {
        texts.append(initial.name(QColor::HexArgb));
        return take(colors, std::optional<QColor>());
    }
    /// Shows the dialog, lets the next visitor use it, and answers what it was ended with.
    int dialog(QDialog& dialog) override
    {
        texts.append(dialog.windowTitle());
        QTimer::singleShot(0, &dialog, [this, &dialog] {
            take(dialogs, std::function<void(QDialog&)>([](QDialog& open) { open.reject(); }))(dialog);
        });
        return dialog.exec();
    }

    std::deque<boxes::Button> buttons;
    std::deque<std::optional<QString>> prompts;
    std::deque<QString> files;
    std::deque<int> commands;
    std::deque<std::optional<QColor>> colors;
    std::deque<std::function<void(QDialog&)>> dialogs;
    QStringList texts;
    QStringList titles; ///< of the message boxes
    QStringList filters;

private:
    template <class Queue, class T>
    T take(Queue& queue, T otherwise)
    {
        if (queue.empty()) {
            ADD_FAILURE() << "a box came without an answer: " << texts.join(u" | "_s).toStdString();
            return otherwise;
        }
        T answer = queue.front();
        queue.pop_front();
        return answer;
    }
};

/// The interface editor in a main window, on a real world with or without the real scene plug-in.
class Editor : public testing::Test {
protected:
    void start(bool with_scene = true)
    {
        if (with_scene) {
            const Status loaded = m_world.plug_man().load(QStringLiteral(TARN_SCENE_PLUG_IN));
            ASSERT_TRUE(loaded) << loaded.message().toStdString();
            m_scene = find_gui_scene(m_world);
            ASSERT_NE(m_scene, nullptr);
            m_scene->on_world_created(&m_world);
        }
        m_ui.create_control_bars(&m_frame);
        m_ui.create_tab_windows(&m_top, &m_side);
        m_ui.on_world_created(&m_world);
        m_world.add_listener(&m_ui);
        m_world.on_broadcast = [this](int code) { m_codes.push_back(code); };
        m_world.broadcast(ui_full_refresh);
        m_codes.clear();
    }
    void TearDown() override
    {
        m_world.remove_listener(&m_ui);
        m_ui.destroy_windows();
        m_ui.destroy_windows();
        m_world.plug_man().unload_all();
        VLCMsgIniW::set_language(Language::Chinese);
    }
    CGuiCore& core() { return m_scene->gui_core(); }
    CChildDlg* page(const QString& name)
    {
        for (QWidget* parent : {static_cast<QWidget*>(&m_frame), static_cast<QWidget*>(&m_side)})
            if (auto* found = parent->findChild<CChildDlg*>(name))
                return found;
        ADD_FAILURE() << "no page " << name.toStdString();
        return nullptr;
    }

    CBaseWorld m_world;
    CGuiPlugScene* m_scene = nullptr;
    QMainWindow m_frame;
    QStackedWidget m_top;
    QStackedWidget m_side;
    CGuiUI m_ui;
    std::vector<int> m_codes;
    QueuedAnswers m_answers;
};

} // namespace tarn::test
