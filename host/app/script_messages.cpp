#include "script_messages.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "script/script_runtime.h"
#include "studio.h"

using tarn::lang;
using tarn::boxes::Button;

namespace {

constexpr std::size_t most_messages = 20; ///< that wait to be shown

} // namespace

ScriptMessages::ScriptMessages(QWidget& window, Studio& studio) : m_window(window), m_studio(studio) {}

void ScriptMessages::post(const QString& text, const QString& title)
{
    if (m_messages.size() >= most_messages)
        return;
    m_messages.push_back({.text = text, .title = title});
    if (m_messages.size() == 1)
        QMetaObject::invokeMethod(this, &ScriptMessages::show_all, Qt::QueuedConnection);
}

void ScriptMessages::show_all()
{
    const auto scripts = [this]() -> tarn::ScriptRuntime& { return m_studio.world().scripts(); };
    scripts().set_paused(true);
    while (!m_messages.empty()) {
        tarn::boxes::Message box = m_messages.front();
        if (m_studio.is_playing())
            box.cancel_caption = lang(u"停止预览", u"Stop Preview");
        else if (scripts().suspended() > 0)
            box.cancel_caption = lang(u"停止脚本", u"Stop Script");
        if (!box.cancel_caption.isEmpty())
            box.buttons.push_back(Button::Cancel);
        if (tarn::boxes::message(&m_window, box) == Button::Cancel && box.buttons.size() > 1) {
            m_messages.clear();
            scripts().reset();
            m_studio.set_playing(false);
            break;
        }
        m_messages.pop_front();
    }
    scripts().set_paused(false);
}
