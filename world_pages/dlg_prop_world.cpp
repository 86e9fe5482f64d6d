#include "dlg_prop_world.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "frame/dlg_group.h"
#include "gui_scene/gui_plug_scene.h"
#include "world/world_scene.h"
#include "world_kinds.h"

#include "animation/animation_states.h"

using tarn::ChoiceItem;
using tarn::Default;
using tarn::FieldRow;
using tarn::key;
using tarn::NumberLook;
using tarn::ObjectRef;
using tarn::WorldObjectState;

namespace {

constexpr NumberLook metres{.step = 0.1, .format = "%.4g"};
constexpr NumberLook degrees{.step = 1, .format = "%.4g"};
constexpr NumberLook factor{.step = 0.1, .format = "%.4g"};

constexpr FieldRow number_row(int control, tarn::FieldKey field, NumberLook look, Default reset = Default::Offered)
{
    return {.control = control, .field = field, .reset = reset, .number = look};
}

/// The paths that there are.
std::vector<ChoiceItem> paths(CGuiPlugScene& scene, const tarn::ModelObject&)
{
    std::vector<ChoiceItem> items{{ObjectRef(), tarn::lang(u"无路径", u"No path")}};
    for (const tarn::WorldObject* object : scene.world()->objects().objects())
        if (object->type() == tarn::WorldType::Path)
            items.push_back({ObjectRef{object->id()}, object->name()});
    return items;
}

using S = WorldObjectState;
using T = tarn::TimerObjectState;

constexpr FieldRow rows[] = {
    {.control = 7111, .field = key<&S::name>, .reset = Default::None},
    number_row(7112, key<&S::x>, metres, Default::None),
    number_row(7113, key<&S::y>, metres, Default::None),
    number_row(7114, key<&S::z>, metres, Default::None),
    number_row(7115, key<&S::turn_x>, degrees),
    number_row(7116, key<&S::turn_y>, degrees),
    number_row(7117, key<&S::turn_z>, degrees),
    number_row(7118, key<&S::size_x>, factor),
    number_row(7119, key<&S::size_y>, factor),
    number_row(7120, key<&S::size_z>, factor),
    {.control = 7121, .field = key<&S::color>},
    {.control = 7122, .field = key<&S::transparency>, .number = {.step = 0.05}},
    {.control = 7123, .field = key<&S::visible>},
    {.control = 7124, .field = key<&S::locked>},
    {.control = 7127, .field = key<&S::hot_spot>},
    {.control = 7125, .field = key<&T::path>, .choices = paths, .target = &tarn::timer_object_of_selection},
    {.control = 7126, .field = key<&T::along_path>, .target = &tarn::timer_object_of_selection},
};

} // namespace

CDlgPropWorld::CDlgPropWorld(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropWorld"), tarn::selected_world_objects, parent)
{
}

void CDlgPropWorld::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    m_pages = findChild<CDlgGroup*>();
    m_pages->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    for (const tarn::WorldKind& kind : tarn::world_kinds())
        if (kind.page)
            m_pages->add_wnd(tarn::make_page(*kind.page, m_pages), kind.page->template_id);
}

void CDlgPropWorld::on_world_created(CBaseWorld* world)
{
    CBoundPage::on_world_created(world);
    m_pages->on_world_created(world);
}

void CDlgPropWorld::update_ui(int code)
{
    CBoundPage::update_ui(code);
    m_pages->update_ui(code);
}

void CDlgPropWorld::refresh()
{
    CBoundPage::refresh();
    choose_page();
}

void CDlgPropWorld::choose_page()
{
    const auto* object = static_cast<const tarn::WorldObject*>(current());
    const tarn::PageEntry* page = object ? tarn::world_kind(object->type()).page : nullptr;
    m_pages->setVisible(page);
    if (page)
        m_pages->show_wnd_by_id(page->template_id);
}
