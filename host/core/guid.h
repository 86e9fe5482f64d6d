#pragma once

#include <QUuid>

/// An identifier of a scene object; zero stands for "no object".
class CGuid {
public:
    CGuid() = default;
    static const CGuid s_gen_zero;

    static CGuid create() { return CGuid(QUuid::createUuid()); }
    /// The same for the same name, in every run of the program.
    static CGuid named(const QString& name) { return CGuid(QUuid::createUuidV5(QUuid(), name)); }

    void set_zero() { m_id = QUuid(); }
    bool is_zero() const { return m_id.isNull(); }
    QString to_string() const { return m_id.toString(QUuid::WithoutBraces); }
    bool operator==(const CGuid&) const = default;

private:
    explicit CGuid(const QUuid& id) : m_id(id) {}
    QUuid m_id;
};
