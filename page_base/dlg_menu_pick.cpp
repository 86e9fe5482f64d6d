#include "dlg_menu_pick.h"

#include "core/language.h"
#include "core/res_handle_man.h"
#include "frame/boxes.h"
#include "gui_child_dlg.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/gui_core.h"
#include "menu_picture.h"
#include "widgets/button_st.h"

#include <QListWidget>
#include <QVBoxLayout>

namespace {

constexpr int template_id = 6860;

enum Id : int { id_ok = 1, id_cancel = 2, id_list = 6861 };

} // namespace

// The template's controls, by which automation knows the dialog.
class CDlgMenuPick::Page : public CChildDlg {
public:
    Page(CDlgMenuPick& dialog, const CGuiCore& core)
        : CChildDlg(QStringLiteral("CDlgMenuPick"), &dialog), m_dialog(dialog), m_core(core)
    {
    }

    /// The first row stands for no menu.
    void choose(quint32 menu)
    {
        int row = 0;
        for (int i = 0; i < int(m_core.GetMenus().size()); ++i)
            if (m_core.GetMenus()[i]->id() == menu)
                row = i + 1;
        m_list->setCurrentRow(row);
    }
    quint32 chosen() const
    {
        const CDXUTMenu* menu = chosen_menu();
        return menu ? menu->id() : 0;
    }

protected:
    void OnInitDialog() override
    {
        CChildDlg::OnInitDialog();
        m_list = control_as<QListWidget>(id_list);
        m_list->addItem(tarn::lang(u"（无菜单）", u"(No menu)"));
        for (const CDXUTMenu* menu : m_core.GetMenus())
            m_list->addItem(menu->name());
        connect(m_list, &QListWidget::currentRowChanged, this,
                [this] { m_picture->show_menu(&m_core, chosen_menu()); });
        connect(m_picture, &CMenuPicture::item_clicked, this,
                [this](int item) { m_picture->show_menu(&m_core, chosen_menu(), item); });
        connect(m_list, &QListWidget::itemDoubleClicked, &m_dialog, &QDialog::accept);
        on_click(id_ok, [this] { m_dialog.accept(); });
        on_click(id_cancel, [this] { m_dialog.reject(); });
        button(id_ok)->setDefault(true);
    }
    QWidget* create_widget(const QString& class_name, QWidget* parent) override
    {
        if (class_name != QLatin1String("CMenuPicture"))
            return nullptr;
        m_picture = new CMenuPicture(parent);
        return m_picture;
    }

private:
    const CDXUTMenu* chosen_menu() const
    {
        const int row = m_list->currentRow() - 1;
        return row >= 0 ? m_core.GetMenus().value(row) : nullptr;
    }

    CDlgMenuPick& m_dialog;
    const CGuiCore& m_core;
    QListWidget* m_list = nullptr;
    CMenuPicture* m_picture = nullptr;
};

CDlgMenuPick::CDlgMenuPick(const CGuiCore& core, quint32 current) : m_page(new Page(*this, core))
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_page->Create(template_id, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_page);
    setWindowTitle(tarn::lang(u"选择菜单", u"Choose Menu"));
    m_page->choose(current);
}

std::optional<quint32> CDlgMenuPick::do_modal(QWidget* parent)
{
    setParent(parent, windowFlags());
    if (tarn::boxes::dialog(*this) != QDialog::Accepted)
        return {};
    return m_page->chosen();
}
