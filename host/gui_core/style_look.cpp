#include "style_look.h"

#include "control_style.h"
#include "control_type.h"
#include "interface_font.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr int owner_numbers = 128; ///< all are below

/// Where each owner has each element: its place in look_owners() and among its elements.
struct Place {
    int owner = -1;
    int part = -1;
};

constexpr std::size_t element_count = std::size_t(Element::White) + 1;

class Places {
public:
    Places()
    {
        const auto owners = look_owners();
        m_rows.fill(-1);
        for (std::size_t o = 0; o < owners.size(); ++o) {
            m_rows[std::size_t(owners[o].number)] = int(o);
            for (std::size_t part = 0; part < owners[o].elements.size(); ++part) {
                const StyleElement& element = owners[o].elements[part];
                m_own[o][std::size_t(element.element)] = int(part) + 1;
                if (element.spare < 0)
                    m_usual[std::size_t(element.element)] = {int(o), int(part)};
            }
        }
    }
    int row(int owner) const { return owner >= 0 && owner < owner_numbers ? m_rows[std::size_t(owner)] : -1; }
    Place of(int owner, Element element) const
    {
        const int place = row(owner);
        const int own = place < 0 ? 0 : m_own[std::size_t(place)][std::size_t(element)];
        return own > 0 ? Place{place, own - 1} : m_usual[std::size_t(element)];
    }

private:
    std::array<int, owner_numbers> m_rows;
    std::array<std::array<int, element_count>, 32> m_own{}; ///< 1 and up
    std::array<Place, element_count> m_usual;
};

const Places& places()
{
    static const Places all;
    return all;
}

std::size_t index(VisualState state)
{
    return state == VisualState::Hidden ? 0 : std::size_t(state);
}

} // namespace

StyleLook::StyleLook() : StyleLook(Levels()) {}

StyleLook::StyleLook(const Levels& levels, const StyleLook* before)
{
    find_tokens(levels);
    find_picture(levels, before);
    find_parts(levels);
}

void StyleLook::find_tokens(const Levels& levels)
{
    for (const StyleToken& token : style_tokens())
        m_tokens.insert(QLatin1String(token.name), token.color);
    for (auto level = levels.rbegin(); level != levels.rend(); ++level)
        m_tokens.insert((*level)->tokens);
}

void StyleLook::find_picture(const Levels& levels, const StyleLook* before)
{
    while (m_atlas_level < levels.size() && levels[m_atlas_level]->atlas.is_null())
        ++m_atlas_level;
    m_atlas = m_atlas_level < levels.size() ? levels[m_atlas_level]->atlas : Atlas::of_program();
    m_picture = before && before->m_atlas.is_shared_with(m_atlas)
        ? before->m_picture
        : m_atlas.picture().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

void StyleLook::find_parts(const Levels& levels)
{
    for (const LookOwner& row : look_owners()) {
        Owner& owner = m_owners.emplace_back();
        owner.row = &row;
        for (int part = 0; part < part_count(row); ++part)
            for (int s = 0; s < style_state_count; ++s) {
                const auto state = VisualState(s);
                if (element_part(row, part)) {
                    owner.elements.resize(std::size_t(part) + 1);
                    owner.elements[std::size_t(part)][std::size_t(s)] = styled(levels, row, part, state);
                } else {
                    const std::size_t place = std::size_t(part) - owner.elements.size();
                    owner.colors.resize(place + 1);
                    const StyleColor& color = *color_part(row, part);
                    const quint32 chosen = chosen_color(levels, row, part, state);
                    owner.colors[place][std::size_t(s)] = chosen
                        ? chosen
                        : m_tokens.value(QLatin1String(color.tokens[color.has_states ? s : 0]));
                }
            }
        find_font(levels, QLatin1String(row.name), owner);
    }
}

void StyleLook::find_font(const Levels& levels, const QString& name, Owner& owner)
{
    QString style;
    for (const StyleState* level : levels) {
        if (owner.family.isEmpty())
            owner.family = level->fonts.value(name);
        if (owner.font_size == 0)
            owner.font_size = int(level->font_sizes.value(name));
        if (style.isEmpty())
            style = level->font_styles.value(name);
    }
    if (owner.font_size == 0)
        owner.font_size = default_font_size;
    owner.font_style = font_style_from(style);
}

StyledElement StyleLook::styled(const Levels& levels, const LookOwner& owner, int part, VisualState state) const
{
    // A part without states has one picture and one look.
    const VisualState own = part_has_states(owner, part) ? state : VisualState::Normal;
    const QString name = part_name(owner, part, own);
    StyledElement look;
    look.region = default_rect(owner, part, own);
    look.edges = default_edges(*element_part(owner, part));
    if (m_atlas_level < levels.size())
        if (const QRect region = rect_from(levels[m_atlas_level]->regions.value(name));
            !region.isEmpty() && m_picture.rect().contains(region)) {
            look.region = region;
            look.shades = false;
        }
    for (const StyleState* level : levels) {
        bool ok = false;
        const QMargins edges = edges_from(level->edges.value(name), ok);
        if (!ok)
            continue;
        look.edges = edges;
        break;
    }
    look.color = chosen_color(levels, owner, part, state);
    return look;
}

/// What was chosen for Normal serves the states that have no colour of their own, but for a disabled text.
quint32 StyleLook::chosen_color(const Levels& levels, const LookOwner& owner, int part, VisualState state) const
{
    const bool has_states = part_has_states(owner, part);
    const bool is_served = !has_states || element_part(owner, part) || state != VisualState::Disabled;
    for (const StyleState* level : levels) {
        if (level->colors.isEmpty())
            continue;
        QString text = level->colors.value(part_name(owner, part, has_states ? state : VisualState::Normal));
        if (text.isEmpty() && is_served)
            text = level->colors.value(part_name(owner, part, VisualState::Normal));
        const StyleValue value = style_value(text);
        if (const quint32 color = value.token.isEmpty() ? value.color : token(value.token))
            return color;
    }
    return 0;
}

const StyledElement& StyleLook::element(int owner, Element element, VisualState state) const
{
    static const StyledElement none;
    const Place place = places().of(owner, element);
    return place.owner < 0 ? none : m_owners[std::size_t(place.owner)].elements[std::size_t(place.part)][index(state)];
}

const StyledElement& StyleLook::element(const LookOwner& owner, int part, VisualState state) const
{
    return this->owner(owner.number).elements[std::size_t(part)][index(state)];
}

quint32 StyleLook::color(const LookOwner& row, int part, VisualState state) const
{
    return owner(row.number).colors[std::size_t(part) - row.elements.size()][index(state)];
}

/// Texts come first among the colours.
quint32 StyleLook::text_color(int number, VisualState state) const
{
    const Owner& found = owner(number);
    return found.colors.empty() ? token(QStringLiteral("text")) : found.colors.front()[index(state)];
}

const StyleLook::Owner& StyleLook::owner(int number) const
{
    const int row = places().row(number);
    return m_owners[std::size_t(row < 0 ? places().row(DXUT_CONTROL_STATIC) : row)];
}

const QString& StyleLook::family(int number) const
{
    return owner(number).family;
}

int StyleLook::font_size(int number) const
{
    return owner(number).font_size;
}

FontStyle StyleLook::font_style(int number) const
{
    return owner(number).font_style;
}

} // namespace tarn
