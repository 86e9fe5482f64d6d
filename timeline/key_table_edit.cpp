#include "key_table_edit.h"

#include "animation/anim_time.h"
#include "animation/ease.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/journal.h"
#include "core/language.h"
#include "timer_object_text.h"
#include "widgets/number_format.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>

namespace tarn {

namespace {

/// The shortest text that reads back as the same number.
QString shortest(float number)
{
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return QString::fromLatin1(buffer.data(), end - buffer.data());
}

/// The time in the timebar's unit; of one between two frames with the part of a frame.
double number_of(const CTimebar& bar, float time)
{
    const double whole = bar.time_unit().number_of(time);
    return !bar.shows_frames() || bar.time_unit().time_of(whole) == time ? whole
                                                                         : double(time) * std::max(bar.frame_rate(), 1);
}

KeySelection selection_of(const std::vector<KeyPlace>& keys)
{
    KeySelection selection;
    for (const KeyPlace& place : keys)
        selection[place.variable].push_back(place.time());
    for (auto& [variable, times] : selection)
        std::sort(times.begin(), times.end());
    return selection;
}

bool is_time(float seconds)
{
    return seconds >= 0 && seconds <= max_time;
}

bool edit_times(CTimebar& bar, KeySelection& keys, const Sum& sum)
{
    const auto is_alone = [](const auto& entry) { return entry.second.size() == 1; };
    if (!sum.change && !std::all_of(keys.begin(), keys.end(), is_alone))
        return false;
    return bar.retime_keys(keys, [&](float time) {
        const float moved = bar.time_unit().time_of(sum.of(number_of(bar, time)));
        return is_time(moved) ? moved : time;
    });
}

/// Changes each of the keys by `edit`, which gets the track and the key's index.
template <class Edit>
bool edit_each(const KeySelection& keys, Edit&& edit)
{
    bool changed = false;
    for (const auto& [variable, times] : keys)
        changed |= variable->edit_keys({}, [&](KeyTrack& track) {
            for (const float time : times)
                if (const qsizetype key = track.find(time); key >= 0)
                    edit(*variable, track, key);
        });
    return changed;
}

/// The value that a key gets; what it has when the text says nothing for its type.
KeyValue changed_value(const CTVar& variable, const KeyValue& before, const QString& text)
{
    KeyValue value = before;
    const auto sum = parse_sum(text);
    if (sum && variable.type() == VarType::Float) {
        const double number = sum->of(double(before.part(0)));
        return std::abs(number) <= double(KeyValue::max_number) ? KeyValue::number(float(number)) : before;
    }
    if (sum && variable.type() == VarType::Int) {
        const double number = std::trunc(sum->of(before.as_int()));
        return std::abs(number) < 2147483648.0 ? KeyValue::whole(int(number)) : before;
    }
    return variable.get_var_from_string(text, value) ? value : before;
}

float held_ease(double ease)
{
    return float(std::clamp(ease, double(-Ease::limit), double(Ease::limit)));
}

/// A key from the cells of a line; its variable is not looked at.
bool read_key(const CTimebar& bar, const QStringList& cells, const CTVar& variable, Key& key)
{
    const auto time = parse_number(cells[int(KeyColumn::Time)]);
    key.time = time ? bar.time_unit().time_of(*time) : -1;
    if (!is_time(key.time))
        return false;
    const QString ease = cells.value(int(KeyColumn::Ease)).trimmed();
    const auto number = parse_number(ease);
    if (!ease.isEmpty() && !number)
        return false;
    key.ease = held_ease(number.value_or(0));
    return variable.get_var_from_string(cells[int(KeyColumn::Content)].trimmed(), key.value);
}

QString name_in_table(const CTVar& variable)
{
    return target_text(*variable.object()) + QLatin1Char('\t') + variable_text(variable);
}

} // namespace

QString key_column_title(KeyColumn column)
{
    switch (column) {
    case KeyColumn::Time: return lang(u"时间", u"Time");
    case KeyColumn::Object: return lang(u"对象", u"Object");
    case KeyColumn::Variable: return lang(u"变量", u"Variable");
    case KeyColumn::Content: return lang(u"值", u"Value");
    case KeyColumn::Ease: return lang(u"松紧", u"Ease");
    }
    return {};
}

QString key_text(const CTimebar& bar, KeyPlace place, KeyColumn column)
{
    const KeyTrack& keys = place.variable->keys();
    switch (column) {
    case KeyColumn::Time: return shortest(float(number_of(bar, keys.time(place.key))));
    case KeyColumn::Object: return target_text(*place.variable->object());
    case KeyColumn::Variable: return variable_text(*place.variable);
    case KeyColumn::Content: return CTVar::get_string_from_var(keys.value(place.key));
    case KeyColumn::Ease: return shortest(keys.ease(place.key));
    }
    return {};
}

bool is_key_editable(KeyPlace place, KeyColumn column)
{
    return column == KeyColumn::Content || column == KeyColumn::Ease || (column == KeyColumn::Time && place.key > 0);
}

KeySelection edit_keys(CTimebar& bar, const std::vector<KeyPlace>& keys, KeyColumn column, const QString& text)
{
    const UserAction action(bar.journal(), lang(u"编辑关键帧", u"Edit Keys"));
    KeySelection selection = selection_of(keys);
    const auto sum = parse_sum(text);
    bool changed = false;
    if (column == KeyColumn::Content)
        changed = edit_each(selection, [&](const CTVar& variable, KeyTrack& track, qsizetype key) {
            track.set_value(key, changed_value(variable, track.value(key), text.trimmed()));
        });
    else if (sum && column == KeyColumn::Ease)
        changed = edit_each(selection, [&](const CTVar&, KeyTrack& track, qsizetype key) {
            if (const double ease = sum->of(double(track.ease(key))); !std::isnan(ease))
                track.set_ease(key, held_ease(ease));
        });
    else if (sum && column == KeyColumn::Time)
        changed = edit_times(bar, selection, *sum);
    return changed ? selection : KeySelection();
}

QString text_of_keys(const CTimebar& bar, const std::vector<KeyPlace>& keys)
{
    QString text;
    for (const KeyPlace& place : keys)
        for (int column = 0; column < key_column_count; ++column)
            text += key_text(bar, place, KeyColumn(column)) + QLatin1Char(column + 1 < key_column_count ? '\t' : '\n');
    return text;
}

PastedKeys paste_keys(CTimebar& bar, const QString& text)
{
    QHash<QString, CTVar*> variables;
    for (const CTimerObject* object : bar.objects())
        for (CTVar* variable : object->variables())
            variables.insert(name_in_table(*variable), variable);
    PastedKeys pasted;
    std::map<CTVar*, std::map<float, Key>> added;
    for (QString line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        const QStringList cells = line.split(QLatin1Char('\t'));
        CTVar* variable = cells.size() > int(KeyColumn::Content)
            ? variables.value(cells[1].trimmed() + QLatin1Char('\t') + cells[2].trimmed())
            : nullptr;
        Key key;
        if (variable && read_key(bar, cells, *variable, key))
            added[variable][key.time] = key;
        else
            pasted.refused.append(line);
    }
    const UserAction action(bar.journal(), lang(u"粘贴关键帧", u"Paste Keys"));
    for (const auto& [variable, keys] : added) {
        std::vector<Key> list;
        for (auto [time, key] : keys) {
            if (const qsizetype there = variable->keys().find(time); there >= 0)
                key.group = variable->keys().group(there);
            list.push_back(key);
        }
        variable->edit_keys({}, [&](KeyTrack& track) { track.edit({}, list); });
        pasted.written += int(list.size());
    }
    return pasted;
}

} // namespace tarn
