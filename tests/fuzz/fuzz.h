#pragma once

#include <QByteArray>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Ends the program where something that must hold for every input does not.
inline void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// Hands out the bytes of an input from the front; zeros when they are used up.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : m_rest(data), m_left(size) {}

    bool empty() const { return m_left == 0; }
    std::uint8_t byte()
    {
        if (empty())
            return 0;
        --m_left;
        return *m_rest++;
    }
    std::uint32_t word()
    {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i)
            value = value << 8 | byte();
        return value;
    }
    /// At most `size` bytes.
    QByteArray bytes(std::size_t size)
    {
        const std::size_t taken = size < m_left ? size : m_left;
        const QByteArray value(reinterpret_cast<const char*>(m_rest), qsizetype(taken));
        m_rest += taken;
        m_left -= taken;
        return value;
    }
    QByteArray rest() { return bytes(m_left); }

private:
    const std::uint8_t* m_rest;
    std::size_t m_left;
};

/// Each target defines this one; the input is hostile.
void fuzz(FuzzInput input);
