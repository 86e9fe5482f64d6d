#pragma once

#include "engine/address_gate.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QWidget>

class CBaseWorld;

/// The addresses that the author allowed, in a file of settings, and the box that asks for more. It is the world's gate as
/// long as it lives.
class AddressPermissions : public QObject, public tarn::AddressGate {
    Q_OBJECT

public:
    AddressPermissions(CBaseWorld& world, const QString& settings_file);
    ~AddressPermissions() override;

    /// Where the box belongs; before, and without it, nobody is asked.
    void set_window(QWidget* window) { m_window = window; }

    bool is_allowed(const QString& address) const override { return m_allowed.contains(address); }
    void set_allowed(const QStringList& addresses, bool on) override;
    int revision() const override { return m_revision; }
    bool can_ask() const override { return m_window; }
    void ask(const QStringList& addresses) override;
    void set_running(bool on) override;

private:
    void read();
    void ask_all();
    QStringList take_some();

    CBaseWorld& m_world;
    const QString m_settings_file;
    QPointer<QWidget> m_window;
    QSet<QString> m_allowed;
    int m_revision = 0;
    QStringList m_waiting;   ///< to be asked for
    QSet<QString> m_asked;   ///< since the scene began to run
    bool m_declined = false; ///< likewise
    bool m_asking = false;   ///< the box is open, or will be
};
