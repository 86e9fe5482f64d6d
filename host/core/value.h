#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

namespace tarn {

using NumberList = QList<double>;

/// An attribute's value outside its object: what automation, scripts and merging see. monostate stands for "none".
using Value = std::variant<std::monostate, bool, qint64, double, QString, QStringList, NumberList>;

/// A reference to a model object by id; 0 refers to nothing. A type of its own, so that copying and merging can find
/// the references among the numbers.
struct ObjectRef {
    quint32 id = 0;
    bool operator==(const ObjectRef&) const = default;
};

/// The children of an object, by id.
using IdList = QList<ObjectRef>;

} // namespace tarn
