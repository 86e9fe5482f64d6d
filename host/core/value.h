#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <variant>

namespace tarn {

/// A reference to a model object by id; 0 refers to nothing. A type of its own, so that copying and merging can find
/// the references among the numbers.
struct ObjectRef {
    quint32 id = 0;
    bool operator==(const ObjectRef&) const = default;
};

using NumberList = QList<double>;
using IdList = QList<ObjectRef>;
using TextMap = QMap<QString, QString>;
using NumberMap = QMap<QString, double>;

/// An attribute's value outside its object: what automation, scripts and merging see. monostate stands for "none".
using Value = std::variant<std::monostate, bool, qint64, double, QString, QStringList, NumberList, ObjectRef, IdList,
                           TextMap, NumberMap>;

} // namespace tarn
