#pragma once

#include <QByteArray>
#include <QString>

namespace tarn {

/// What a font says of itself for people to read. Empty where it says nothing.
struct FontNotice {
    QString copyright;
    QString licence; ///< cut where it is longer than anybody reads
    QString address; ///< where the licence is to be found

    bool is_empty() const { return copyright.isEmpty() && licence.isEmpty() && address.isEmpty(); }
};

/// From a font's table "name", which may hold anything; in the program's language where the font has that.
FontNotice font_notice(const QByteArray& name_table);

} // namespace tarn
