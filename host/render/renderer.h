#pragma once

#include "draw_item.h"
#include "ground_look.h"

#include <QImage>
#include <QSize>

#include <memory>
#include <span>

namespace tarn {

/// A camera and how much of it is drawn. Distances are metres, y is up; the projection is as OpenGL has it.
struct RenderView {
    QMatrix4x4 view; ///< from the world into the camera's space
    QMatrix4x4 projection;
    QSize pixels;
    double dpr = 1;     ///< pixels of one unit of the interface: how wide the ground's lines are
    bool axes = true;   ///< their lines on the ground, for an author
    bool ground = true; ///< sky, lines and shadows; without a perspective, or when false, there is only the background
    QColor background = QColor(0x16, 0x1d, 0x2c);

    friend bool operator==(const RenderView&, const RenderView&) = default;
};

/// The ground and the sky of a view.
GroundLook ground_look(const RenderView& view);

/// What the last picture took.
struct RenderCost {
    int items = 0; ///< that were drawn: those that the camera sees
    qsizetype triangles = 0;
    bool drawn = false; ///< false: nothing had changed
};

/// Draws models with OpenGL 3.3 into textures, in a context of its own. Can be used in the program's main thread only.
class Renderer {
public:
    /// Null where OpenGL is missing or does not suffice.
    static std::unique_ptr<Renderer> create();
    ~Renderer();

    /// Whether the program's OpenGL widgets can draw the textures.
    bool shares_with_widgets() const;

    /// Draws the picture `target`, a number of the caller's choice for each camera, unless it shows just that already.
    /// Answers the name of its texture, which stays the same: its first row is the lowest, and its opacity is without a
    /// meaning. 0 for a size that is empty.
    quint32 draw(int target, const RenderView& view, std::span<const DrawItem> items);
    /// The same picture read back; null before it was drawn.
    QImage picture(int target);
    void remove_target(int target);

    /// Gives DrawItem::textures a picture under a number of the caller's choice. One that is given again unchanged costs
    /// nothing. A null picture removes it.
    void set_texture(quint64 number, const QImage& image);

    const RenderCost& cost() const;

private:
    class Parts;

    explicit Renderer(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};

} // namespace tarn
