#include "look_choices.h"

#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/gui_core.h"
#include "gui_core/style_look.h"
#include "page_base/pop_dlg_color.h"
#include "widgets/color_swatch.h"

#include <QComboBox>
#include <QSignalBlocker>

#include <algorithm>

namespace tarn {

namespace {

// Rows of the sources of a colour; named ones follow.
enum Source : int { source_none, source_own, source_first_token };

constexpr quint32 transparent_white = 0x00ffffff; ///< what all zeros, which mean none, look like

} // namespace

QString token_caption(const QString& name)
{
    const auto tokens = style_tokens();
    const auto known = std::ranges::find_if(tokens,
                                            [&](const StyleToken& token) { return name == QLatin1String(token.name); });
    return known == tokens.end() ? name : known->caption();
}

void show_color(const CGuiCore& core, const LookPart& part, CColorSwatch& swatch, QComboBox& sources)
{
    const StyleLook& look = core.look();
    const StyleValue value = style_value(core.element_color(part));
    const QSignalBlocker quiet(sources);
    sources.clear();
    sources.addItem(lang(u"（默认）", u"(Usual)"));
    sources.addItem(lang(u"自定颜色", u"A color of its own"));
    for (auto token = look.tokens().begin(); token != look.tokens().end(); ++token)
        sources.addItem(token_caption(token.key()), token.key());
    const int named = value.token.isEmpty() ? -1 : sources.findData(value.token);
    sources.setCurrentIndex(named >= 0 ? named : value.color ? source_own : source_none);
    const LookOwner& owner = *look_owner(part.owner);
    const quint32 seen = element_part(owner, part.part) ? look.element(owner, part.part, part.state).color
                                                        : look.color(owner, part.part, part.state);
    swatch.set_color(seen ? seen : 0xffffffff);
}

QString color_source(const CColorSwatch& swatch, const QComboBox& sources, int row)
{
    if (row == source_own)
        return color_text(swatch.argb());
    return row >= source_first_token ? sources.itemData(row).toString() : QString();
}

std::optional<quint32> ask_color(QWidget* parent, const CColorSwatch& swatch)
{
    CPopDlgColor dialog(swatch.argb());
    if (dialog.do_modal(parent) != 1)
        return {};
    return dialog.color() ? dialog.color() : transparent_white;
}

SelectedOwner selected_owner(const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    if (selection.controls_selected && selection.current_control)
        return {selection.current_control->GetType(), selection.current_control};
    return {look_owner_dialog, selection.current_dialog};
}

} // namespace tarn
