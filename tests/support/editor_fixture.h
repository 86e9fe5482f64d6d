#pragma once

#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/gui_child_dlg.h"
#include "queued_answers.h"
#include "shell/gui_ui.h"

#include <QMainWindow>
#include <QStackedWidget>

#include <gtest/gtest.h>

namespace tarn::test {

using namespace Qt::StringLiterals;

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
