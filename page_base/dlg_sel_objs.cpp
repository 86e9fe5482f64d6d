#include "dlg_sel_objs.h"

#include "core/language.h"
#include "core/res_handle_man.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/child_dlg.h"
#include "gui_child_dlg.h"
#include "widgets/button_st.h"
#include "world/world_scene.h"

#include <QListWidget>
#include <QVBoxLayout>

namespace {

constexpr int template_id = 6880;

enum Id : int { id_ok = 1, id_cancel = 2, id_list = 6881 };

constexpr int id_role = Qt::UserRole;

} // namespace

bool tarn::is_of_kind(const WorldObject& object, SceneObjectKind kind)
{
    return (object.type() == WorldType::Camera) == (kind == SceneObjectKind::Camera);
}

// The template's controls, by which automation knows the dialog.
class CDlgSelObjs::Page : public CChildDlg {
public:
    explicit Page(CDlgSelObjs& dialog) : CChildDlg(QStringLiteral("CDlgSelObjs"), &dialog), m_dialog(dialog) {}

    /// The first row stands for no object.
    void list(const CBaseWorld& world, tarn::SceneObjectKind kind, tarn::ObjectRef current)
    {
        add(tarn::lang(u"（无）", u"(None)"), {});
        m_list->setCurrentRow(0);
        for (const tarn::WorldObject* object : world.objects().objects()) {
            if (!tarn::is_of_kind(*object, kind))
                continue;
            add(object->name(), {object->id()});
            if (object->id() == current.id)
                m_list->setCurrentRow(m_list->count() - 1);
        }
    }
    tarn::ObjectRef chosen() const
    {
        const QListWidgetItem* item = m_list->currentItem();
        return {item ? item->data(id_role).toUInt() : 0};
    }

protected:
    void OnInitDialog() override
    {
        CChildDlg::OnInitDialog();
        m_list = control_as<QListWidget>(id_list);
        connect(m_list, &QListWidget::itemDoubleClicked, &m_dialog, &QDialog::accept);
        on_click(id_ok, [this] { m_dialog.accept(); });
        on_click(id_cancel, [this] { m_dialog.reject(); });
        button(id_ok)->setDefault(true);
    }

private:
    void add(const QString& text, tarn::ObjectRef object)
    {
        auto* item = new QListWidgetItem(text, m_list);
        item->setData(id_role, object.id);
    }

    CDlgSelObjs& m_dialog;
    QListWidget* m_list = nullptr;
};

CDlgSelObjs::CDlgSelObjs(const CBaseWorld& world, tarn::SceneObjectKind kind, tarn::ObjectRef current)
    : m_page(new Page(*this))
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_page->Create(template_id, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_page);
    setWindowTitle(tarn::lang(u"选择物体", u"Choose Object"));
    m_page->list(world, kind, current);
}

std::optional<tarn::ObjectRef> CDlgSelObjs::sel_objs(QWidget* parent, const CBaseWorld& world,
                                                     tarn::SceneObjectKind kind, tarn::ObjectRef current)
{
    CDlgSelObjs dialog(world, kind, current);
    dialog.setParent(parent, dialog.windowFlags());
    if (tarn::boxes::dialog(dialog) != QDialog::Accepted)
        return {};
    return dialog.m_page->chosen();
}
