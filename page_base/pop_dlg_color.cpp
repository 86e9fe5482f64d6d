#include "pop_dlg_color.h"

#include "core/language.h"
#include "core/res_handle_man.h"
#include "frame/boxes.h"
#include "gui_child_dlg.h"
#include "widgets/button_st.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"

#include <QVBoxLayout>

#include <array>

namespace {

constexpr int template_id = 6347;
constexpr int result_cancel = 2;
constexpr quint32 alpha_mask = 0xff000000;

enum Id : int { id_ok = 1, id_cancel = 2, id_pick = 3, id_red = 6397, id_swatch = 6464 };

struct Channel {
    int id;
    int shift; ///< bits in the colour
};
constexpr std::array channels{Channel{6411, 24}, Channel{id_red, 16}, Channel{6401, 8}, Channel{6405, 0}};

} // namespace

// The template's controls, by which automation knows the dialog.
class CPopDlgColor::Page : public CChildDlg {
public:
    explicit Page(CPopDlgColor& dialog) : CChildDlg(QStringLiteral("CPopDlgColor"), &dialog), m_dialog(dialog) {}

    CSuperEdit& edit(int id) const { return *control_as<CSuperEdit>(id); }
    CColorSwatch* swatch() const { return control_as<CColorSwatch>(id_swatch); }

protected:
    void OnInitDialog() override
    {
        CChildDlg::OnInitDialog();
        for (const Channel& channel : channels) {
            edit(channel.id).set_range(0, 255, 1);
            edit(channel.id).set_format_string(QStringLiteral("%0.0f"));
            edit(channel.id).set_truncating(true);
            on_number(channel.id, [this](double) { m_dialog.recompute(); });
        }
        on_click(id_pick, [this] { m_dialog.on_pick(); });
        on_click(id_ok, [this] { m_dialog.accept(); });
        on_click(id_cancel, [this] { m_dialog.reject(); });
        button(id_ok)->setDefault(true);
    }

private:
    CPopDlgColor& m_dialog;
};

CPopDlgColor::CPopDlgColor(quint32 argb) : m_argb(argb), m_page(new Page(*this))
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_page->Create(template_id, this);
    m_swatch = m_page->swatch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(m_page);
    setWindowTitle(tarn::lang(u"选择颜色", u"Color Pick"));
    show_numbers();
}

int CPopDlgColor::do_modal(QWidget* parent)
{
    setParent(parent, windowFlags());
    m_page->edit(id_red).selectAll();
    return tarn::boxes::dialog(*this);
}

void CPopDlgColor::reject()
{
    done(result_cancel);
}

void CPopDlgColor::show_numbers()
{
    for (const Channel& channel : channels)
        m_page->edit(channel.id).set_pos(m_argb >> channel.shift & 0xff);
    m_swatch->set_color(m_argb);
}

void CPopDlgColor::recompute()
{
    m_argb = 0;
    for (const Channel& channel : channels)
        m_argb |= (quint32(m_page->edit(channel.id).get_pos()) & 0xff) << channel.shift;
    m_swatch->set_color(m_argb);
}

void CPopDlgColor::on_pick()
{
    if (const auto chosen = tarn::boxes::color(this, QColor::fromRgb(m_argb)))
        m_argb = (m_argb & alpha_mask) | (chosen->rgb() & ~alpha_mask);
    show_numbers();
}
