#include "dlg_target_pick.h"

#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/field.h"
#include "core/language.h"
#include "core/res_handle_man.h"
#include "frame/boxes.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/gui_child_dlg.h"
#include "widgets/button_st.h"

#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

using tarn::lang;
using tarn::ModelObject;

namespace {

constexpr int template_id = 6942;

enum Id : int { id_ok = 1, id_cancel = 2, id_filter = 6943, id_list = 6944 };

/// Everything in the scene that is of the timer object's kind.
std::vector<ModelObject*> fitting(const CGuiPlugScene& scene, const CTimerObject& object)
{
    const tarn::AnimationTarget* kind = scene.animation().target_kind(object.type());
    std::vector<ModelObject*> found;
    if (!kind)
        return found;
    for (const tarn::ObjectKind& candidates : scene.document().kinds())
        for (ModelObject* candidate : scene.document().objects_of(candidates)) {
            const CTimerObject* usage = object.timebar()->SearchItemUsage(*candidate);
            if (kind->takes(*candidate) && (!usage || usage == &object))
                found.push_back(candidate);
        }
    return found;
}

QString caption_of(const ModelObject& object)
{
    if (const auto* control = dynamic_cast<const CDXUTControl*>(&object))
        return control->dialog() ? QStringLiteral("%1 (%2)").arg(control->name(), control->dialog()->name())
                                 : control->name();
    const tarn::FieldBase* name = object.fields().find("name");
    const tarn::Value value = name ? object.property(*name) : tarn::Value();
    const auto* text = std::get_if<QString>(&value);
    return text ? *text : QString::number(object.id());
}

} // namespace

// The template's controls, by which automation knows the dialog.
class CDlgTargetPick::Page : public CChildDlg {
public:
    Page(CDlgTargetPick& dialog, const CGuiPlugScene& scene, const CTimerObject& object)
        : CChildDlg(QStringLiteral("CDlgTargetPick"), &dialog), m_dialog(dialog), m_scene(scene), m_object(object)
    {
    }

    quint32 chosen() const
    {
        const QListWidgetItem* item = m_list->currentItem();
        return item && !item->isHidden() ? item->data(Qt::UserRole).toUInt() : 0;
    }

protected:
    void OnInitDialog() override
    {
        CChildDlg::OnInitDialog();
        m_list = control_as<QListWidget>(id_list);
        for (const ModelObject* object : fitting(m_scene, m_object)) {
            auto* item = new QListWidgetItem(caption_of(*object), m_list);
            item->setData(Qt::UserRole, object->id());
            if (object->id() == m_object.target().id)
                m_list->setCurrentItem(item);
        }
        if (m_list->count() == 0)
            (new QListWidgetItem(lang(u"没有其他可用的对象。", u"There is no other object that fits."), m_list))
                ->setFlags(Qt::NoItemFlags);
        connect(m_list, &QListWidget::currentRowChanged, this, [this] { show_ok(); });
        connect(m_list, &QListWidget::itemDoubleClicked, &m_dialog, &QDialog::accept);
        connect(control_as<QLineEdit>(id_filter), &QLineEdit::textChanged, this,
                [this](const QString& part) { filter(part); });
        on_click(id_ok, [this] { m_dialog.accept(); });
        on_click(id_cancel, [this] { m_dialog.reject(); });
        button(id_ok)->setDefault(true);
        show_ok();
    }

private:
    void show_ok() { button(id_ok)->setEnabled(chosen() != 0); }
    void filter(const QString& part)
    {
        for (int row = 0; row < m_list->count(); ++row)
            m_list->item(row)->setHidden(!m_list->item(row)->text().contains(part, Qt::CaseInsensitive));
        show_ok();
    }

    CDlgTargetPick& m_dialog;
    const CGuiPlugScene& m_scene;
    const CTimerObject& m_object;
    QListWidget* m_list = nullptr;
};

CDlgTargetPick::CDlgTargetPick(const CGuiPlugScene& scene, const CTimerObject& object)
    : m_page(new Page(*this, scene, object))
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_page->Create(template_id, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_page);
    setWindowTitle(lang(u"选择目标 — %1", u"Choose Target - %1").arg(object.get_type_name()));
}

std::optional<quint32> CDlgTargetPick::pick(QWidget* parent, const CGuiPlugScene& scene, const CTimerObject& object)
{
    CDlgTargetPick dialog(scene, object);
    dialog.setParent(parent, dialog.windowFlags());
    if (tarn::boxes::dialog(dialog) != QDialog::Accepted || !dialog.m_page->chosen())
        return {};
    return dialog.m_page->chosen();
}
