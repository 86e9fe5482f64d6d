#include "frame/timeline_state.h"
#include "surface_handle.h"

namespace tarn::script {

namespace {

using Object = std::optional<ScriptObject>;

/// Answers what `read` finds in the surface's timeline.
template <class Read>
Result<Data> ask(SurfaceHandle* self, Read read)
{
    if (!self->timeline)
        return Status::error(QStringLiteral("this surface is no timeline"));
    return Data(read(*self->timeline));
}

template <auto member>
Result<Data> number(Automation& app, SurfaceHandle* self)
{
    app.settle();
    return ask(self, [](const TimelineState& timeline) { return double((timeline.*member)()); });
}

template <auto member>
Result<Data> times(Automation& app, SurfaceHandle* self)
{
    app.settle();
    return ask(self, [](const TimelineState& timeline) {
        return list_of((timeline.*member)(), [](float time) { return Data(double(time)); });
    });
}

Result<Data> drag_mode(Automation&, SurfaceHandle* self)
{
    return ask(self, [](const TimelineState& timeline) { return timeline.drag_mode(); });
}

Result<Data> hover(Automation&, SurfaceHandle* self)
{
    return ask(self, [](const TimelineState& timeline) {
        const TimelineState::HoverTimes at = timeline.hover_times();
        return Data::Record{{"key", double(at.key)},
                            {"script", double(at.script)},
                            {"point", double(at.point)},
                            {"extra", double(at.extra)},
                            {"other", double(at.other)}};
    });
}

template <class Pair>
Data both(const std::optional<Pair>& pair)
{
    return pair ? Data(Data::Several{{double(pair->first), double(pair->second)}}) : Data();
}

Result<Data> range(Automation&, SurfaceHandle* self)
{
    return ask(self, [](const TimelineState& timeline) { return both(timeline.range()); });
}

Result<Data> row(Automation& app, SurfaceHandle* self, const ScriptObject& object, const Object& variable)
{
    app.settle();
    return ask(self, [&](const TimelineState& timeline) {
        return object ? both(timeline.row(*object, variable ? variable->get() : nullptr)) : Data();
    });
}

Result<Data> time_from_pixel(Automation&, SurfaceHandle* self, int x)
{
    return ask(self, [x](const TimelineState& timeline) { return double(timeline.time_from_pixel(x)); });
}

Result<Data> pixel_from_time(Automation&, SurfaceHandle* self, double time)
{
    return ask(self, [time](const TimelineState& timeline) { return double(timeline.pixel_from_time(float(time))); });
}

Result<Data> label(Automation&, SurfaceHandle* self, double time)
{
    return ask(self, [time](const TimelineState& timeline) { return timeline.label(float(time)); });
}

constexpr Binding methods[] = {
    {"view_origin", "self", binding<number<&TimelineState::view_origin>>},
    {"seconds_per_pixel", "self", binding<number<&TimelineState::seconds_per_pixel>>},
    {"current_time", "self", binding<number<&TimelineState::current_time>>},
    {"drag_mode", "self", binding<drag_mode>},
    {"selected_keys", "self", binding<times<&TimelineState::selected_keys>>},
    {"selected_scripts", "self", binding<times<&TimelineState::selected_scripts>>},
    {"hover", "self", binding<hover>},
    {"range", "self", binding<range>},
    {"row", "self object variable", binding<row>},
    {"time_from_pixel", "self x", binding<time_from_pixel>},
    {"pixel_from_time", "self t", binding<pixel_from_time>},
    {"label", "self t", binding<label>},
};

} // namespace

std::span<const Binding> timeline_methods()
{
    return methods;
}

} // namespace tarn::script
