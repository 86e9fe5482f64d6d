#include "script_run.h"

#include "core/field.h"
#include "core/language.h"
#include "core/model_object.h"
#include "engine/base_world.h"
#include "script_fault.h"
#include "script_run_log.h"

#include <QLocale>

#include <chrono>
#include <utility>

namespace tarn {

namespace {

using namespace std::chrono_literals;

constexpr auto tick_interval = 16ms;

/// As a script would write it.
struct Show {
    QString operator()(std::monostate) const { return QStringLiteral("nil"); }
    QString operator()(bool flag) const { return flag ? QStringLiteral("true") : QStringLiteral("false"); }
    QString operator()(qint64 number) const { return QString::number(number); }
    QString operator()(double number) const { return QString::number(number, 'g', QLocale::FloatingPointShortest); }
    QString operator()(const QString& text) const { return QLatin1Char('"') + text + QLatin1Char('"'); }
    QString operator()(ObjectRef reference) const { return QString::number(reference.id); }
    template <class T>
    QString operator()(const QList<T>& list) const
    {
        QStringList parts;
        for (const T& element : list)
            parts.append((*this)(element));
        return QLatin1Char('{') + parts.join(QStringLiteral(", ")) + QLatin1Char('}');
    }
    template <class T>
    QString operator()(const QMap<QString, T>& map) const
    {
        QStringList parts;
        for (auto entry = map.begin(); entry != map.end(); ++entry)
            parts.append(QStringLiteral("[%1] = %2").arg((*this)(entry.key()), (*this)(*entry)));
        return QLatin1Char('{') + parts.join(QStringLiteral(", ")) + QLatin1Char('}');
    }
};

QString shown(const Value& value)
{
    return std::visit(Show(), value);
}

} // namespace

ScriptRun::ScriptRun(QString function_name, CBaseWorld& world, ScriptRunLog& log, std::vector<ScriptValue> arguments)
    : m_name(std::move(function_name)), m_world(world), m_log(log), m_arguments(std::move(arguments))
{
    m_ticks.setInterval(tick_interval);
    connect(&m_ticks, &QTimer::timeout, this, &ScriptRun::tick);
}

ScriptRun::~ScriptRun()
{
    if (m_started) {
        runtime().reset();
        runtime().on_print = std::move(m_printed_before);
        runtime().on_error = std::move(m_failed_before);
    }
    take_back();
}

/// Until something runs here, what the scene's functions tell goes where it went before.
void ScriptRun::hear_runtime()
{
    if (m_started)
        return;
    m_started = true;
    m_printed_before = std::exchange(runtime().on_print,
                                     [this](const QString& text) { m_log.add(ScriptRunLog::Kind::Print, text); });
    m_failed_before = std::exchange(runtime().on_error, [this](const ScriptError& error) { add_error(error); });
}

ScriptRuntime& ScriptRun::runtime() const
{
    return m_world.scripts();
}

void ScriptRun::start(const QString& text)
{
    take_back();
    runtime().reset();
    m_log.clear();
    hear_runtime();
    m_edit = m_world.begin_edit ? m_world.begin_edit(lang(u"运行脚本", u"Run Script")) : nullptr;
    if (const Status set = runtime().try_text(m_name, text); !set)
        m_log.add(ScriptRunLog::Kind::Error, set.message());
    else {
        tell_arguments();
        tell(runtime().call(m_name, m_arguments));
    }
    if (runtime().suspended() > 0) {
        m_since_tick.start();
        m_ticks.start();
    } else {
        finish();
    }
    m_log.flush();
    Q_EMIT went_on();
}

void ScriptRun::stop()
{
    if (!is_waiting())
        return;
    runtime().reset();
    m_log.add(ScriptRunLog::Kind::Result, lang(u"已停止。", u"Stopped."));
    finish();
    m_log.flush();
    Q_EMIT went_on();
}

void ScriptRun::tick()
{
    runtime().tick(runtime().now() + double(m_since_tick.restart()) / 1000);
    if (runtime().suspended() == 0) {
        m_log.add(ScriptRunLog::Kind::Result, lang(u"运行已结束。", u"Ended."));
        finish();
    }
    m_log.flush();
    Q_EMIT went_on();
}

/// Pages show what the scripts changed.
void ScriptRun::finish()
{
    m_ticks.stop();
    if (m_edit)
        m_world.broadcast(ui_full_refresh);
}

/// A run is a trial: the next one begins with the scene as the author left it, and so does he when the editor closes.
void ScriptRun::take_back()
{
    m_ticks.stop();
    if (std::exchange(m_edit, std::nullopt))
        m_world.broadcast(ui_full_refresh);
}

void ScriptRun::tell_arguments()
{
    QStringList parts;
    for (const ScriptValue& argument : m_arguments) {
        const auto* object = std::get_if<ScriptObject>(&argument);
        const auto* value = std::get_if<Value>(&argument);
        const FieldBase* name = object && *object ? (*object)->fields().find("name") : nullptr;
        parts.append(name ? shown((*object)->property(*name)) : value ? shown(*value) : QStringLiteral("nil"));
    }
    if (!parts.isEmpty())
        m_log.add(ScriptRunLog::Kind::Result,
                  lang(u"参数：%1", u"Called with: %1").arg(parts.join(QStringLiteral(", "))));
}

void ScriptRun::tell(const ScriptResult& result)
{
    if (result.error)
        add_error(*result.error);
    else if (result.suspended)
        m_log.add(ScriptRunLog::Kind::Result, lang(u"正在等待…", u"Waiting..."));
    else if (std::holds_alternative<std::monostate>(result.value))
        m_log.add(ScriptRunLog::Kind::Result, lang(u"运行完毕。", u"Done."));
    else
        m_log.add(ScriptRunLog::Kind::Result, lang(u"结果：%1", u"Result: %1").arg(shown(result.value)));
}

void ScriptRun::add_error(const ScriptError& error)
{
    if (error.function == m_name)
        m_log.add(ScriptRunLog::Kind::Error, fault_text(error), error.line - 1);
    else
        m_log.add(ScriptRunLog::Kind::Error, error.text());
}

} // namespace tarn
