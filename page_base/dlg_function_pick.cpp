#include "dlg_function_pick.h"

#include "core/language.h"
#include "core/res_handle_man.h"
#include "frame/boxes.h"
#include "frame/child_dlg.h"
#include "gui_child_dlg.h"
#include "script/config_scene.h"
#include "widgets/button_st.h"

#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

namespace {

constexpr int template_id = 6985;

enum Id : int { id_ok = 1, id_cancel = 2, id_filter = 6881, id_list = 6882, id_new = 6883 };

} // namespace

// The template's controls, by which automation knows the dialog.
class CDlgFunctionPick::Page : public CChildDlg {
public:
    Page(CDlgFunctionPick& dialog, const CConfigScene& functions)
        : CChildDlg(QStringLiteral("CDlgFunctionPick"), &dialog), m_dialog(dialog), m_functions(functions)
    {
    }

    void choose(const QString& name)
    {
        const auto found = m_list->findItems(name, Qt::MatchExactly);
        m_list->setCurrentItem(found.isEmpty() ? m_list->item(0) : found.front());
        m_filter->setFocus();
    }
    const QString& chosen() const { return m_chosen; }

protected:
    void OnInitDialog() override
    {
        CChildDlg::OnInitDialog();
        m_filter = control_as<QLineEdit>(id_filter);
        m_list = control_as<QListWidget>(id_list);
        m_filter->setMaxLength(IFunc::max_name);
        for (const FuncPtr& function : m_functions.functions())
            m_list->addItem(function->name());
        m_list->sortItems();
        connect(m_filter, &QLineEdit::textChanged, this, &Page::filter);
        connect(m_list, &QListWidget::itemDoubleClicked, this, [this] { take_listed(); });
        connect(m_list, &QListWidget::currentRowChanged, this,
                [this](int row) { button(id_ok)->setEnabled(row >= 0); });
        on_click(id_new, [this] { take(m_filter->text().trimmed()); });
        on_click(id_ok, [this] { take_listed(); });
        on_click(id_cancel, [this] { m_dialog.reject(); });
        button(id_ok)->setEnabled(false);
        button(id_ok)->setDefault(true);
        button(id_new)->setAutoDefault(false);
    }

private:
    /// The first that still fits is chosen, so that Enter takes it; where none does, Enter makes a new one.
    void filter(const QString& text)
    {
        int first = -1;
        for (int row = 0; row < m_list->count(); ++row) {
            const bool fits = m_list->item(row)->text().contains(text.trimmed(), Qt::CaseInsensitive);
            m_list->setRowHidden(row, !fits);
            first = fits && first < 0 ? row : first;
        }
        m_list->setCurrentRow(first);
        button(first < 0 && !text.trimmed().isEmpty() ? id_new : id_ok)->setDefault(true);
    }
    void take_listed()
    {
        if (const QListWidgetItem* item = m_list->currentItem())
            take(item->text());
    }
    void take(const QString& name)
    {
        m_chosen = name;
        m_dialog.accept();
    }

    CDlgFunctionPick& m_dialog;
    const CConfigScene& m_functions;
    QLineEdit* m_filter = nullptr;
    QListWidget* m_list = nullptr;
    QString m_chosen;
};

CDlgFunctionPick::CDlgFunctionPick(const CConfigScene& functions, const QString& current)
    : m_page(new Page(*this, functions))
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_page->Create(template_id, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_page);
    setWindowTitle(tarn::lang(u"选择脚本", u"Choose Script"));
    m_page->choose(current);
}

std::optional<QString> CDlgFunctionPick::do_modal(QWidget* parent)
{
    setParent(parent, windowFlags());
    if (tarn::boxes::dialog(*this) != QDialog::Accepted)
        return {};
    return m_page->chosen();
}
