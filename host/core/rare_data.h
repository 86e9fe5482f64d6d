#pragma once

#include <QSharedData>

namespace tarn {

/// A value of type T that takes the room of a pointer while it equals a fresh T. Copies share it.
template <class T>
class RareData {
public:
    bool is_fresh() const { return !m_data; }
    bool is_shared_with(const RareData& other) const { return m_data == other.m_data; }
    const T& get() const
    {
        static const T fresh;
        return m_data ? m_data->value : fresh;
    }
    const T* operator->() const { return &get(); }
    /// `change` is given the value for writing.
    template <class Change>
    void edit(Change&& change)
    {
        if (!m_data)
            m_data = new Data;
        change(m_data->value);
        if (get() == T())
            m_data.reset();
    }

private:
    struct Data : QSharedData {
        T value;
    };
    QSharedDataPointer<Data> m_data;
};

} // namespace tarn
