#pragma once

#include <QByteArray>
#include <QFile>

#include <ctime>

namespace tarn::test {

#if defined(__SANITIZE_ADDRESS__)
constexpr double sanitizers_factor = 10; ///< how much more everything may take
#else
constexpr double sanitizers_factor = 1;
#endif

/// What the program takes from here on: processor time, and memory at its peak beyond what it holds now (0 where the
/// system does not tell).
class ResourcesUsed {
public:
    ResourcesUsed()
    {
        QFile reset(QStringLiteral("/proc/self/clear_refs"));
        if (reset.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            reset.write("5"); // The peak starts anew.
        m_megabytes = status("VmRSS:");
        m_start = now();
    }
    double seconds() const { return now() - m_start; }
    double megabytes() const { return status("VmHWM:") - m_megabytes; }

private:
    static double now()
    {
        timespec time{};
        ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
    }
    static double status(const char* line)
    {
        QFile file(QStringLiteral("/proc/self/status"));
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        for (const QByteArray& text : file.readAll().split('\n'))
            if (text.startsWith(line))
                return text.mid(qsizetype(qstrlen(line))).replace("kB", "").trimmed().toDouble() / 1024;
        return 0;
    }

    double m_start = 0;
    double m_megabytes = 0;
};

} // namespace tarn::test
