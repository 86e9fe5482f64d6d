#pragma once

#include "look_parts.h"
#include "style_state.h"

#include <QImage>
#include <QString>

#include <array>
#include <vector>

namespace tarn {

/// How a style has an element drawn in a state.
struct StyledElement {
    QRect region;       ///< pixels of the atlas
    QMargins edges;     ///< pixels of the atlas
    quint32 color = 0;  ///< ARGB; 0 leaves the picture as it is
    bool shades = true; ///< the picture takes on the colour in its shades; otherwise it is multiplied with it
};

/// What a style and those that it is based on say, put together: what is drawn asks here, part by part.
class StyleLook {
public:
    /// The nearest style first.
    using Levels = std::vector<const StyleState*>;

    StyleLook();
    /// `before`: of which the picture is taken over where it is the same.
    explicit StyleLook(const Levels& levels, const StyleLook* before = nullptr);

    /// From which all elements are drawn, premultiplied.
    const QImage& picture() const { return m_picture; }
    const Atlas& atlas() const { return m_atlas; }

    /// Of an owner that has no such element, what another one has is taken.
    const StyledElement& element(int owner, Element element, VisualState state) const;
    const StyledElement& element(const LookOwner& owner, int part, VisualState state) const;
    /// ARGB of a part that is a colour.
    quint32 color(const LookOwner& owner, int part, VisualState state) const;
    /// That of an owner's texts; of one without any, the usual one.
    quint32 text_color(int owner, VisualState state) const;
    /// ARGB; 0 when there is no token of that name.
    quint32 token(const QString& name) const { return m_tokens.value(name); }
    const QMap<QString, quint32>& tokens() const { return m_tokens; }
    const QString& family(int owner) const; ///< empty for the usual one
    int font_size(int owner) const;         ///< pixels
    FontStyle font_style(int owner) const;

private:
    template <class T>
    using ByState = std::array<T, style_state_count>;
    struct Owner {
        const LookOwner* row = nullptr;
        std::vector<ByState<StyledElement>> elements;
        std::vector<ByState<quint32>> colors;
        QString family;
        int font_size = 0;
        FontStyle font_style;
    };

    void find_tokens(const Levels& levels);
    void find_picture(const Levels& levels, const StyleLook* before);
    void find_parts(const Levels& levels);
    static void find_font(const Levels& levels, const QString& name, Owner& owner);
    StyledElement styled(const Levels& levels, const LookOwner& owner, int part, VisualState state) const;
    quint32 chosen_color(const Levels& levels, const LookOwner& owner, int part, VisualState state) const;
    const Owner& owner(int number) const;

    std::vector<Owner> m_owners; ///< in the order of look_owners()
    QMap<QString, quint32> m_tokens;
    Atlas m_atlas;
    QImage m_picture;
    std::size_t m_atlas_level = 0; ///< whose the atlas is; the number of levels for the program's own
};

} // namespace tarn
