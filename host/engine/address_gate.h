#pragma once

#include <QStringList>

namespace tarn {

/// Which addresses of the network a scene that runs may load from: what its author allowed on this machine. It is kept in
/// the user's settings and never with a scene, so no scene brings its own permission along.
class AddressGate {
public:
    virtual ~AddressGate() = default;

    /// Exactly this address, written as movie_address() writes it.
    virtual bool is_allowed(const QString& address) const = 0;
    virtual void set_allowed(const QStringList& addresses, bool on) = 0;
    /// Grows whenever something is allowed, or no longer.
    virtual int revision() const = 0;

    /// Whether there is an author to ask.
    virtual bool can_ask() const = 0;
    /// Asks for these, soon and together, those left out that were asked for since the scene began to run; once something
    /// was declined, nothing more is asked until the next time. Nothing happens when nobody can be asked.
    virtual void ask(const QStringList& addresses) = 0;
    /// The scene runs from now on, or no more.
    virtual void set_running(bool on) = 0;
};

} // namespace tarn
