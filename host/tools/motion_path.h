#pragma once

class CGuiPlugScene;
class QPainter;

namespace tarn {

class ViewProjection;

/// Draws the ways that the selected objects of the world go in the current timebar, with their keys, while timebars are
/// edited.
void paint_motion_paths(QPainter& painter, const ViewProjection& view, const CGuiPlugScene& scene);

} // namespace tarn
