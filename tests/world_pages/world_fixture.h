#pragma once

#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "shell/page_bar.h"
#include "support/attributes.h"
#include "support/editor_fixture.h"
#include "world/world_scene.h"
#include "world_pages/report_list_world.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTest>

namespace tarn::test {

/// The bar "World" of an editor, with two panels, a camera and a path in the world.
class WorldPages : public Editor {
protected:
    void SetUp() override
    {
        start();
        VLCMsgIniW::set_language(Language::English);
        m_frame.resize(900, 900);
        m_frame.show();
        m_frame.findChild<CPageBar*>(u"CWorldBar"_s)->show_bar(true);
        m_page = page(u"CDlgWorld"_s);
        m_list = static_cast<CReportListWorld*>(m_page->control(7106));
        m_left = world().create(WorldType::Panel, u"Left"_s);
        m_right = world().create(WorldType::Panel, u"Right"_s);
        m_camera = world().create(WorldType::Camera, u"Eye"_s);
        m_path = world().create(WorldType::Path, u"Way"_s);
        m_path->set_points({{-2, 0, 0}, {2, 0, 0}});
        m_scene->document().forget_history();
        tell();
        m_codes.clear();
    }
    WorldScene& world() { return m_world.objects(); }
    void tell() { m_scene->document().changes().tell(); }
    void click(int id) { static_cast<QAbstractButton*>(m_page->control(id))->click(); }
    QStringList names() const
    {
        QStringList list;
        for (int row = 0; row < m_list->row_count(); ++row)
            list.append(m_list->item_caption(row, 0));
        return list;
    }
    void click_cell(int row, int column, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, modifiers,
                          m_list->visualRect(m_list->model()->index(row, column)).center());
    }
    std::vector<WorldObject*> chosen() { return m_world.selection().objects(); }
    std::size_t steps() { return m_scene->journal().step_count(); }

    CChildDlg* m_page = nullptr;
    CReportListWorld* m_list = nullptr;
    WorldObject* m_left = nullptr;
    WorldObject* m_right = nullptr;
    WorldObject* m_camera = nullptr;
    WorldObject* m_path = nullptr;
};

} // namespace tarn::test
