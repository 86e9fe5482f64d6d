#include "address_permissions.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "store/inifile.h"

#include <QUrl>

#include <algorithm>
#include <utility>

using tarn::lang;
using tarn::boxes::Button;

namespace {

constexpr const char* settings_key = "allowed_addresses";
// What one box can show whole.
constexpr int most_in_box = 12;
constexpr qsizetype most_letters = 1500; ///< of addresses and the names of their servers

QString server_of(const QString& address)
{
    return QUrl(address).authority(QUrl::FullyEncoded);
}

} // namespace

AddressPermissions::AddressPermissions(CBaseWorld& world, const QString& settings_file)
    : m_world(world), m_settings_file(settings_file)
{
    read();
    m_world.set_address_gate(this);
}

AddressPermissions::~AddressPermissions()
{
    m_world.set_address_gate(nullptr);
}

void AddressPermissions::read()
{
    const QStringList kept = inifile::get_str_list_from_ini(m_settings_file, QLatin1String(settings_key));
    const QSet<QString> allowed(kept.begin(), kept.end());
    if (std::exchange(m_allowed, allowed) != allowed)
        ++m_revision;
}

void AddressPermissions::set_allowed(const QStringList& addresses, bool on)
{
    read(); // Another program may have changed it.
    for (const QString& address : addresses)
        on ? void(m_allowed.insert(address)) : void(m_allowed.remove(address));
    ++m_revision;
    QStringList kept = m_allowed.values();
    kept.sort();
    if (!inifile::set_str_list_to_ini(m_settings_file, QLatin1String(settings_key), kept))
        tarn::boxes::error(
            m_window,
            lang(u"无法保存网址许可：%1 不可写。", u"What is allowed cannot be kept: %1 cannot be written.")
                .arg(m_settings_file));
    m_world.broadcast(tarn::ui_control_properties);
    m_world.update_all_views();
}

void AddressPermissions::set_running(bool on)
{
    m_waiting.clear();
    m_asked.clear();
    m_declined = false;
    if (on)
        read();
}

void AddressPermissions::ask(const QStringList& addresses)
{
    if (!can_ask() || m_declined)
        return;
    for (const QString& address : addresses)
        if (!is_allowed(address) && !m_asked.contains(address)) {
            m_asked.insert(address);
            m_waiting << address;
        }
    if (!m_waiting.isEmpty() && !std::exchange(m_asking, true))
        QMetaObject::invokeMethod(this, &AddressPermissions::ask_all, Qt::QueuedConnection);
}

/// As many as one box has room for, those of a server one after the other.
QStringList AddressPermissions::take_some()
{
    std::stable_sort(m_waiting.begin(), m_waiting.end(),
                     [](const QString& one, const QString& other) { return server_of(one) < server_of(other); });
    QStringList some;
    qsizetype letters = 0;
    while (!m_waiting.isEmpty() && some.size() < most_in_box) {
        letters += m_waiting.first().size() + server_of(m_waiting.first()).size();
        if (letters > most_letters && !some.isEmpty())
            break;
        some << m_waiting.takeFirst();
    }
    return some;
}

void AddressPermissions::ask_all()
{
    while (!m_waiting.isEmpty()) {
        const QStringList asked = take_some();
        QStringList lines{lang(u"此界面要从网络加载影片：", u"The interface wants to load movies from the network:"),
                          {}};
        QStringList servers;
        for (const QString& address : asked) {
            if (const QString server = server_of(address); !servers.contains(server)) {
                servers << server;
                lines << server;
            }
            lines << address;
        }
        lines << QString()
              << lang(u"允许后，本机以后的预览会直接加载这些网址；可在 FLASH 属性页撤销。",
                      u"Allowed addresses are loaded in every preview on this machine, until you take that back on the "
                      u"Flash page.");
        const Button answer = tarn::boxes::message(
            m_window,
            {.text = lines.join(QLatin1Char('\n')),
             .title = lang(u"从网络加载影片", u"Movies of the Network"),
             .buttons = {Button::No, Button::Yes},
             .captions = {lang(u"暂不(&N)", u"&Not Now"), lang(u"允许(&A)", u"&Allow")},
             .headings = servers});
        if (answer == Button::Yes) {
            set_allowed(asked, true);
        } else {
            m_declined = true;
            m_waiting.clear();
        }
    }
    m_asking = false;
}
