#include "told_by_scene.h"

#include "engine/base_world.h"
#include "script/script_log.h"
#include "script/script_runtime.h"

#include <algorithm>

namespace tarn {

namespace {

InputStep step_of(const ScriptLogEntry& entry)
{
    using Kind = InputStep::Kind;
    switch (entry.kind) {
    case ScriptLogEntry::Kind::Print: return {.kind = Kind::ExpectPrint, .text = entry.text};
    case ScriptLogEntry::Kind::Error:
        return {.kind = Kind::ExpectError, .number = double(entry.line), .text = entry.function};
    case ScriptLogEntry::Kind::Result: break;
    }
    return {.kind = Kind::ExpectCall, .text = entry.function, .object = entry.object};
}

} // namespace

ToldByScene::ToldByScene(CBaseWorld& world) : m_world(world), m_shows_message(world.on_message)
{
    world.script_log().clear();
    world.on_message = [this](const QString& text, const QString& title) {
        hear(); // What was told before stands before.
        m_told.push_back({{.kind = InputStep::Kind::ExpectMessage, .text = text}, m_world.scripts().now()});
        if (m_shows_message)
            m_shows_message(text, title);
    };
}

ToldByScene::~ToldByScene()
{
    m_world.on_message = m_shows_message;
}

std::size_t ToldByScene::count()
{
    hear();
    m_fixed = m_told.size();
    return m_fixed;
}

void ToldByScene::hear()
{
    const ScriptLog& log = m_world.script_log();
    if (log.added() < m_read)
        m_read = 0;
    const std::size_t fresh = std::min(log.added() - m_read, log.entries().size());
    for (auto entry = log.entries().end() - std::ptrdiff_t(fresh); entry != log.entries().end(); ++entry) {
        std::size_t place = m_told.size();
        const auto was_said = [&](const Told& told) {
            return told.time == entry->time
                && (told.step.kind == InputStep::Kind::ExpectPrint || told.step.kind == InputStep::Kind::ExpectMessage);
        };
        if (entry->kind == ScriptLogEntry::Kind::Result)
            while (place > m_fixed && was_said(m_told[place - 1]))
                --place;
        m_told.insert(m_told.begin() + std::ptrdiff_t(place), {step_of(*entry), entry->time});
    }
    m_read = log.added();
}

} // namespace tarn
