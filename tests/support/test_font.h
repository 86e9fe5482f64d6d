#pragma once

#include <QByteArray>
#include <QString>

namespace tarn::test {

/// A TrueType font whose capital letters are squares, of a family that no system has.
struct TestFont {
    QString family = QStringLiteral("Tarn Squares");
    QString copyright{};
    QString licence{};
    QString address{};

    QByteArray bytes() const;
    /// Its table of texts.
    QByteArray name_table() const;
};

} // namespace tarn::test
