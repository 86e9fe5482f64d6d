#pragma once

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace tarn {

class ModelObject;

/// What automation asks a timeline. The program knows no timeline; a widget of a plug-in is one when it implements this.
/// Times are seconds.
class TimelineState {
public:
    /// Of what is under the mouse; -1 where there is nothing of the kind.
    struct HoverTimes {
        float key = -1;
        float script = -1;
        float point = -1;
        float extra = -1;
        float other = -1;
    };

    virtual float view_origin() const = 0;
    virtual float seconds_per_pixel() const = 0;
    virtual float current_time() const = 0;
    virtual int drag_mode() const = 0;
    virtual std::vector<float> selected_keys() const = 0; ///< ascending
    virtual std::vector<float> selected_scripts() const = 0;
    virtual HoverTimes hover_times() const = 0;
    /// Anchor and end of the range that is selected; none when no range is.
    virtual std::optional<std::pair<float, float>> range() const = 0;
    /// Top and height of the row of a timer object, or of one of its variables; none when it is not shown.
    virtual std::optional<std::pair<int, int>> row(const ModelObject& object, const ModelObject* variable) const = 0;
    virtual float time_from_pixel(int x) const = 0;
    virtual float pixel_from_time(float time) const = 0;
    virtual QString label(float time) const = 0;

protected:
    ~TimelineState() = default;
};

} // namespace tarn
