#pragma once

#include <QStringList>

namespace tarn {

/// The title of the box that asks before objects of these names are removed.
QString removal_title(const QStringList& names);

template <class List>
QString removal_title_of(const List& objects)
{
    QStringList names;
    for (const auto* object : objects)
        names.append(object->name());
    return removal_title(names);
}

} // namespace tarn
