// Values of any kind for any attribute: what is taken is written and reads back the same.

#include "fuzz.h"

#include "core/field.h"
#include "core/json_reader.h"
#include "core/json_writer.h"
#include "gui_core/control_class.h"
#include "gui_core/control_state.h"
#include "gui_core/dialog_state.h"

#include <cstring>

namespace {

using namespace tarn;

StatePtr make_state(std::uint8_t kind)
{
    const auto classes = control_classes();
    const std::size_t index = kind % (classes.size() + 1);
    return StatePtr(index < classes.size() ? classes[index].make_state() : new DialogState);
}

double number(FuzzInput& input)
{
    const auto bits = std::uint64_t(input.word()) << 32 | input.word();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

QString text(FuzzInput& input)
{
    return QString::fromUtf8(input.bytes(input.byte()));
}

Value make_value(FuzzInput& input)
{
    switch (input.byte() % 8) {
    case 0: return Value();
    case 1: return bool(input.byte() & 1);
    case 2: return qint64(qint32(input.word()));
    case 3: return qint64(std::uint64_t(input.word()) << 32 | input.word());
    case 4: return number(input);
    case 5: return text(input);
    case 6: {
        QStringList list;
        for (int count = input.byte() % 8; count > 0; --count)
            list.append(text(input));
        return list;
    }
    default: {
        NumberList list;
        for (int count = input.byte() % 8; count > 0; --count)
            list.append(number(input));
        return list;
    }
    }
}

void write_and_compare(const ObjectState& state, ObjectState& fresh)
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("object");
    write_state(state, writer);
    writer.end_object();
    JsonText json(QByteArray::fromStdString(writer.text()), QStringLiteral("state"));
    const auto status = json.each_member([&](std::string_view, JsonCursor& value) { return read_state(fresh, value); });
    require(status.ok(), "what was written can be read");
    for (const FieldBase* field : state.fields())
        require(field->rules().derived || field->same(state, fresh), field->name());
}

} // namespace

void fuzz(FuzzInput input)
{
    const std::uint8_t kind = input.byte();
    const StatePtr state = make_state(kind);
    const StatePtr fresh = make_state(kind);
    const FieldTable& table = state->fields();
    while (!input.empty()) {
        const FieldBase* field = table.at(input.byte() % table.size());
        const Value value = make_value(input);
        if (!field->rules().read_only && field->set(*state, value))
            state->settle(field->key());
    }
    write_and_compare(*state, *fresh);
}
