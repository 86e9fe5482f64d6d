// The styles of the interface and what the author changes of the one that is in force.

#include "core/language.h"
#include "dxut_control.h"
#include "dxut_dialog.h"
#include "dxut_menu.h"
#include "gui_core.h"
#include "gui_style.h"
#include "style_look.h"

#include <QSet>

#include <algorithm>

using tarn::CoreState;
using tarn::LookOwner;
using tarn::LookPart;
using tarn::StyleLook;
using tarn::StyleState;
using tarn::VisualState;

namespace {

constexpr std::size_t most_levels = 16; ///< styles that are based on each other; a made-up package could have a ring

CGuiStyle* base_of(const CGuiStyle& style)
{
    auto* base = style.document().find_as<CGuiStyle>(style.style_state().base.id);
    return base && base->is_attached() ? base : nullptr;
}

StyleLook::Levels levels_from(const CGuiStyle* style)
{
    StyleLook::Levels levels;
    for (; style && levels.size() < most_levels; style = base_of(*style))
        levels.push_back(&style->style_state());
    return levels;
}

/// A part without states has one entry.
VisualState entry_state(const LookOwner& owner, const LookPart& part)
{
    return tarn::part_has_states(owner, part.part) ? part.state : VisualState::Normal;
}

QString entry_name(const LookPart& part)
{
    const LookOwner* owner = tarn::look_owner(part.owner);
    return owner ? tarn::part_name(*owner, part.part, entry_state(*owner, part)) : QString();
}

const tarn::StyleElement* element_of(const LookPart& part)
{
    const LookOwner* owner = tarn::look_owner(part.owner);
    return owner ? tarn::element_part(*owner, part.part) : nullptr;
}

template <class Map>
void put(Map& map, const QString& name, const typename Map::mapped_type& value)
{
    if (value == typename Map::mapped_type())
        map.remove(name);
    else
        map.insert(name, value);
}

/// The colour that the levels choose for a part, as the text of the style that chooses.
QString chosen_text(const StyleLook::Levels& levels, const LookOwner& owner, int part, VisualState state)
{
    const bool is_served = tarn::element_part(owner, part) || state != VisualState::Disabled;
    for (const StyleState* level : levels) {
        QString text = level->colors.value(tarn::part_name(owner, part, state));
        if (text.isEmpty() && is_served)
            text = level->colors.value(tarn::part_name(owner, part, VisualState::Normal));
        if (!text.isEmpty())
            return text;
    }
    return {};
}

/// In one style a colour of a nearer one must not stand behind that of a farther one for another state.
void flatten_colors(const StyleLook::Levels& levels, StyleState& flat)
{
    for (const LookOwner& owner : tarn::look_owners())
        for (int part = 0; part < tarn::part_count(owner); ++part)
            for (int state = 0; state < (tarn::part_has_states(owner, part) ? tarn::style_state_count : 1); ++state)
                put(flat.colors, tarn::part_name(owner, part, VisualState(state)),
                    chosen_text(levels, owner, part, VisualState(state)));
}

} // namespace

void CGuiCore::add_style_kind()
{
    document().add_kind(
        {.part = "scene.json",
         .key = "styles",
         .chinese = u"风格",
         .english = u"style",
         .container = this,
         .make_state = [](int) -> tarn::ObjectState* { return new StyleState; },
         .make_object = [this](tarn::StatePtr state) { return std::make_shared<CGuiStyle>(*this, std::move(state)); },
         .children =
             [](tarn::ObjectState& parent) {
                 auto* core = dynamic_cast<CoreState*>(&parent);
                 return core ? &core->styles : nullptr;
             }});
    m_style_kind = &document().kinds().back();
}

QList<CGuiStyle*> CGuiCore::GetStyles() const
{
    QList<CGuiStyle*> styles;
    for (const tarn::ObjectRef style : core_state().styles)
        styles.append(static_cast<CGuiStyle*>(document().find(style.id)));
    return styles;
}

CGuiStyle* CGuiCore::find_style(const QString& name) const
{
    const auto styles = GetStyles();
    const auto found = std::find_if(styles.begin(), styles.end(), [&](const CGuiStyle* style) {
        return style->origin() == tarn::StyleOrigin::Scene && style->name() == name;
    });
    return found == styles.end() ? nullptr : *found;
}

CGuiStyle* CGuiCore::scene_style() const
{
    auto* style = document().find_as<CGuiStyle>(core_state().scene_style.id);
    return style && style->is_attached() ? style : nullptr;
}

CGuiStyle* CGuiCore::worn_style() const
{
    CGuiStyle* style = scene_style();
    return style && style->name().isEmpty() ? base_of(*style) : style;
}

const StyleLook& CGuiCore::look() const
{
    if (std::exchange(m_look_stale, false))
        m_look = std::make_unique<StyleLook>(levels_from(scene_style()), m_look.get());
    return *m_look;
}

void CGuiCore::look_changed()
{
    m_look_stale = true;
    update_all_elements();
}

void CGuiCore::update_all_elements()
{
    for (CDXUTMenu* menu : GetMenus())
        menu_changed(*menu);
    add_damage(QRectF(QPointF(), m_screen));
}

CGuiStyle* CGuiCore::add_style(tarn::StatePtr state)
{
    const quint32 id = document().take_id();
    if (id == 0)
        return nullptr;
    state->id = id;
    state->parent = {};
    const auto style = document().create(style_kind(), std::move(state));
    document().attach(*style, *this, core_state().styles.size());
    return static_cast<CGuiStyle*>(style.get());
}

void CGuiCore::set_scene_style(CGuiStyle* style)
{
    change<&CoreState::scene_style>(tarn::ObjectRef{style ? style->id() : 0});
    drop_unused_styles();
}

/// What nobody could choose again from the scene: changes without a name, and styles that a file still has.
void CGuiCore::drop_unused_styles()
{
    QSet<const CGuiStyle*> used;
    const auto use = [&](const CGuiStyle* style) {
        for (; style && !used.contains(style); style = base_of(*style))
            used.insert(style);
    };
    use(scene_style());
    std::vector<ModelObject*> gone;
    const auto styles = GetStyles();
    for (const CGuiStyle* style : styles)
        if (!style->name().isEmpty() && style->origin() == tarn::StyleOrigin::Scene)
            use(style);
    for (CGuiStyle* style : styles)
        if (!used.contains(style))
            gone.push_back(style);
    document().detach(gone);
}

void CGuiCore::remove_style(CGuiStyle& style)
{
    if (!style.is_attached())
        return;
    for (const CGuiStyle* worn = scene_style(); worn; worn = base_of(*worn))
        if (worn == &style) {
            tarn::StatePtr flat = flat_style();
            set_scene_style(add_style(std::move(flat)));
            break;
        }
    ModelObject* gone = &style;
    if (style.is_attached())
        document().detach(std::span(&gone, 1));
    look_changed();
}

tarn::StatePtr CGuiCore::flat_style() const
{
    const StyleLook::Levels levels = levels_from(scene_style());
    auto* flat = new StyleState;
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
        flat->tokens.insert((*level)->tokens);
        flat->colors.insert((*level)->colors);
        flat->edges.insert((*level)->edges);
        flat->fonts.insert((*level)->fonts);
        flat->font_sizes.insert((*level)->font_sizes);
        flat->font_styles.insert((*level)->font_styles);
        if ((*level)->atlas.is_null())
            continue;
        flat->atlas = (*level)->atlas;
        flat->regions = (*level)->regions;
    }
    flatten_colors(levels, *flat);
    return tarn::StatePtr(flat);
}

// The author's changes -------------------------------------------------------------------------------------------------

/// The style that takes changes. One that has a name stays as it is.
CGuiStyle* CGuiCore::changed_style()
{
    CGuiStyle* worn = scene_style();
    if (worn && worn->name().isEmpty())
        return worn;
    auto* fresh = new StyleState;
    fresh->base = {worn ? worn->id() : 0};
    CGuiStyle* style = add_style(tarn::StatePtr(fresh));
    if (style)
        set_scene_style(style);
    return style;
}

void CGuiCore::change_look(const std::function<void(StyleState&)>& change)
{
    if (CGuiStyle* style = changed_style())
        style->write<StyleState>(change);
}

QRect CGuiCore::default_rect(const LookPart& part) const
{
    const LookOwner* owner = tarn::look_owner(part.owner);
    return owner ? tarn::default_rect(*owner, part.part, part.state) : QRect();
}

QRect CGuiCore::get_default_rect(int type, int index) const
{
    return index < 0
        ? QRect()
        : default_rect({type, index / tarn::style_state_count, VisualState(index % tarn::style_state_count)});
}

QRect CGuiCore::texture_rect(const LookPart& part) const
{
    return element_of(part) ? look().element(*tarn::look_owner(part.owner), part.part, part.state).region : QRect();
}

QMargins CGuiCore::edge_widths(const LookPart& part) const
{
    return element_of(part) ? look().element(*tarn::look_owner(part.owner), part.part, part.state).edges : QMargins();
}

QImage CGuiCore::texture(const LookPart& part) const
{
    const QRect rect = texture_rect(part);
    return rect.isEmpty() ? QImage() : look().atlas().part(rect);
}

void CGuiCore::set_element_texture(const LookPart& part, const QImage& picture)
{
    const QRect room = default_rect(part);
    if (room.isEmpty() || picture.isNull())
        return;
    const tarn::Atlas present = look().atlas();
    const StyleLook::Levels levels = levels_from(scene_style());
    const auto whose = std::find_if(levels.begin(), levels.end(),
                                    [](const StyleState* level) { return !level->atlas.is_null(); });
    const tarn::TextMap regions = whose == levels.end() ? tarn::TextMap() : (*whose)->regions;
    change_look([&](StyleState& s) {
        if (s.atlas.is_null()) { // The first change of a picture: the scene gets an atlas of its own.
            s.atlas = present;
            s.regions = regions;
        }
        s.atlas.put(room, picture);
        s.regions.insert(entry_name(part), tarn::rect_text({room.topLeft(), picture.size().boundedTo(room.size())}));
    });
}

void CGuiCore::set_edge_widths(const LookPart& part, const QMargins& edges)
{
    if (element_of(part))
        change_look([&](StyleState& s) { s.edges.insert(entry_name(part), tarn::edges_text(edges)); });
}

QString CGuiCore::element_color(const LookPart& part) const
{
    const LookOwner* owner = tarn::look_owner(part.owner);
    return owner ? chosen_text(levels_from(scene_style()), *owner, part.part, entry_state(*owner, part)) : QString();
}

void CGuiCore::set_element_color(const LookPart& part, const QString& text)
{
    if (tarn::look_owner(part.owner))
        change_look([&](StyleState& s) { put(s.colors, entry_name(part), text); });
}

void CGuiCore::set_token(const QString& name, quint32 argb)
{
    change_look([&](StyleState& s) { put(s.tokens, name, argb); });
}

void CGuiCore::set_look_font(int owner, const QString& family)
{
    if (const LookOwner* row = tarn::look_owner(owner))
        change_look([&](StyleState& s) { put(s.fonts, QLatin1String(row->name), family); });
}

void CGuiCore::set_look_font_size(int owner, int pixels)
{
    if (const LookOwner* row = tarn::look_owner(owner))
        change_look([&](StyleState& s) { put(s.font_sizes, QLatin1String(row->name), quint32(std::max(0, pixels))); });
}

void CGuiCore::set_look_font_style(int owner, const tarn::FontStyle& style)
{
    if (const LookOwner* row = tarn::look_owner(owner))
        change_look(
            [&](StyleState& s) { s.font_styles.insert(QLatin1String(row->name), tarn::font_style_text(style)); });
}

bool CGuiCore::is_element_changed(const LookPart& part) const
{
    const CGuiStyle* style = scene_style();
    if (!style || !style->name().isEmpty())
        return false;
    const StyleState& s = style->style_state();
    const QString name = entry_name(part);
    const StyleLook::Levels below = levels_from(base_of(*style));
    const QString region_below = below.empty() ? QString() : below.front()->regions.value(name);
    return s.colors.contains(name) || s.edges.contains(name)
        || (!s.atlas.is_null() && s.regions.value(name) != region_below);
}

void CGuiCore::reset_element(const LookPart& part)
{
    if (!is_element_changed(part))
        return;
    const StyleLook below(levels_from(base_of(*scene_style())));
    const QString name = entry_name(part);
    const QRect room = default_rect(part);
    change_look([&](StyleState& s) {
        s.colors.remove(name);
        s.edges.remove(name);
        if (s.atlas.is_null() || room.isEmpty())
            return;
        const tarn::StyledElement& look = below.element(*tarn::look_owner(part.owner), part.part, part.state);
        s.atlas.put(room, below.atlas().part(room));
        put(s.regions, name, look.shades ? QString() : tarn::rect_text(look.region));
    });
}
