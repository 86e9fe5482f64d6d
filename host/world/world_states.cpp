#include "world_states.h"

#include "core/field.h"
#include "core/language.h"

#include <cmath>

namespace tarn {

namespace {

constexpr double farthest = FieldType<QList<QVector3D>>::farthest;
constexpr double max_turn = 7200; ///< degrees
constexpr double max_size = 10'000;

} // namespace

const FieldTable& WorldState::field_table()
{
    using S = WorldState;
    static const FieldTable table(nullptr, field<S, &S::objects>("object_ids", {}, children()));
    return table;
}

const FieldTable& WorldObjectState::field_table()
{
    using S = WorldObjectState;
    constexpr auto place = [] { return range(-farthest, farthest); };
    constexpr auto turn = [] { return range(-max_turn, max_turn); };
    constexpr auto size = [] { return range(-max_size, max_size); };
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", 0u, read_only()), field<S, &S::name>("name", {}, max_length(S::max_name)),
        field<S, &S::type>("type", -1, read_only()), field<S, &S::x>("x", 0.f, place()),
        field<S, &S::y>("y", 0.f, place()), field<S, &S::z>("z", 0.f, place()),
        field<S, &S::turn_x>("turn_x", 0.f, turn()), field<S, &S::turn_y>("turn_y", 0.f, turn()),
        field<S, &S::turn_z>("turn_z", 0.f, turn()), field<S, &S::size_x>("size_x", 1.f, size()),
        field<S, &S::size_y>("size_y", 1.f, size()), field<S, &S::size_z>("size_z", 1.f, size()),
        field<S, &S::color>("color", 0xffffffffu), field<S, &S::transparency>("transparency", 0.f, range(0, 1)),
        field<S, &S::visible>("visible", true), field<S, &S::locked>("locked", false),
        field<S, &S::hot_spot>("hot_spot", false));
    return table;
}

const FieldTable& ModelState::field_table()
{
    using S = ModelState;
    static const FieldTable table(&WorldObjectState::field_table(), field<S, &S::file>("file", {}, max_length(300)));
    return table;
}

const FieldTable& MovingModelState::field_table()
{
    using S = MovingModelState;
    static const FieldTable table(&ModelState::field_table(), field<S, &S::action>("action", {}, max_length(300)),
                                  field<S, &S::action_time>("action_time", 0.f, range(0, 86'400)),
                                  field<S, &S::plays>("plays", true), field<S, &S::repeats>("repeats", true));
    return table;
}

const FieldTable& CameraState::field_table()
{
    using S = CameraState;
    static const FieldTable table(&WorldObjectState::field_table(),
                                  field<S, &S::field_of_view>("field_of_view", 45.f, range(1, 170)));
    return table;
}

const FieldTable& PathState::field_table()
{
    using S = PathState;
    static const FieldTable table(&WorldObjectState::field_table(), field<S, &S::points>("points"),
                                  field<S, &S::closed>("closed", false), field<S, &S::smooth>("smooth", true));
    return table;
}

void PathState::settle(const WrittenFields&)
{
    if (points.size() > max_points)
        points.resize(max_points);
}

const FieldTable& PanelState::field_table()
{
    using S = PanelState;
    static const FieldTable table(&WorldObjectState::field_table(),
                                  field<S, &S::width>("width", 1.f, range(0.001, max_size)),
                                  field<S, &S::height>("height", 1.f, range(0.001, max_size)),
                                  field<S, &S::picture>("picture", {}, picture_name()));
    return table;
}

// Points ----------------------------------------------------------------------------------------------------------------

namespace {

using Points = FieldType<QList<QVector3D>>;

Status three_each()
{
    return Status::error(lang(u"需要点的数字列表：每个点三个有限的数字",
                              u"a list of the points' numbers is needed: three finite ones for each"));
}

} // namespace

Value Points::to_value(const QList<QVector3D>& points)
{
    NumberList numbers;
    for (const QVector3D& point : points)
        numbers << double(point.x()) << double(point.y()) << double(point.z());
    return numbers;
}

Status Points::from_value(const Value& value, const FieldRules& rules, QList<QVector3D>& out)
{
    const auto* numbers = std::get_if<NumberList>(&value);
    if (!numbers || numbers->size() % 3 != 0
        || !std::all_of(numbers->begin(), numbers->end(), [](double number) { return std::isfinite(number); }))
        return three_each();
    out.clear();
    for (qsizetype i = 0; i < numbers->size(); i += 3)
        out.emplaceBack(float(numbers->at(i)), float(numbers->at(i + 1)), float(numbers->at(i + 2)));
    hold(rules, out);
    return {};
}

void Points::hold(const FieldRules&, QList<QVector3D>& points)
{
    for (QVector3D& point : points)
        for (int part = 0; part < 3; ++part)
            point[part] = std::clamp(point[part], -farthest, farthest);
}

void Points::write(const QList<QVector3D>& points, JsonWriter& writer)
{
    writer.begin_array();
    for (const QVector3D& point : points)
        for (int part = 0; part < 3; ++part)
            writer.value(point[part]);
    writer.end_array();
}

Status Points::read(JsonCursor& cursor, QList<QVector3D>& out)
{
    QList<float> numbers;
    Status status = cursor.each_element([&](JsonCursor& element) { return element.read(numbers.emplaceBack()); });
    if (!status)
        return status;
    if (numbers.size() % 3 != 0)
        return three_each();
    out.clear();
    for (qsizetype i = 0; i < numbers.size(); i += 3)
        out.emplaceBack(numbers[i], numbers[i + 1], numbers[i + 2]);
    return {};
}

std::size_t Points::kept_bytes(const QList<QVector3D>& kept, const QList<QVector3D>& other)
{
    return kept.isSharedWith(other) ? 0 : std::size_t(kept.capacity()) * sizeof(QVector3D);
}

} // namespace tarn
