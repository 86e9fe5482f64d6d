#pragma once

#include <QHash>
#include <QSet>
#include <QString>

namespace tarn {

/// Finds names that no object has yet: "Button1", then "Button2". Whoever names an object tells.
class FreeNames {
public:
    bool is_known() const { return m_known; }
    /// Some names may be others now: they have to be told anew.
    void forget();
    /// Between forget() and the next question come all names that there are.
    void begin() { m_known = true; }
    void add(const QString& name) { m_taken.insert(name); }
    bool has(const QString& name) const { return m_taken.contains(name); }
    /// `stem` with the smallest number, from 1 on, that is free.
    QString find(const QString& stem);

private:
    bool m_known = false;
    QSet<QString> m_taken;
    QHash<QString, int> m_next; ///< by stem; the numbers below are taken
};

} // namespace tarn
