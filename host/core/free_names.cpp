#include "free_names.h"

namespace tarn {

void FreeNames::forget()
{
    m_known = false;
    m_taken.clear();
    m_next.clear();
}

QString FreeNames::find(const QString& stem)
{
    int& number = m_next[stem];
    QString name;
    do
        name = stem + QString::number(++number);
    while (m_taken.contains(name));
    --number; // It stays free until an object has it.
    return name;
}

} // namespace tarn
