#include "confinement.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>

#ifdef Q_OS_LINUX
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <iterator>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace tarn {

int node_major(const QByteArray& said)
{
    return said.startsWith('v') ? said.mid(1).split('.').first().toInt() : 0;
}

QStringList player_arguments(const MovieTools& tools, int node_major)
{
    return {QStringLiteral("--no-warnings"),
            node_major >= 24 ? QStringLiteral("--permission") : QStringLiteral("--experimental-permission"),
            QStringLiteral("--allow-fs-read=%1/*").arg(tools.scripts),
            QStringLiteral("--allow-fs-read=%1/*").arg(tools.packages),
            QStringLiteral("--allow-addons"),
            QStringLiteral("--disallow-code-generation-from-strings"),
            QStringLiteral("--liftoff-only"), // starts at once, and takes less memory
            QStringLiteral("--max-old-space-size=256"),
            tools.scripts + QStringLiteral("/main.js"),
            tools.packages};
}

namespace {

#if defined(Q_OS_LINUX) && (defined(__x86_64__) || defined(__aarch64__))

#ifdef __x86_64__
constexpr quint32 this_machine = AUDIT_ARCH_X86_64;
#else
constexpr quint32 this_machine = AUDIT_ARCH_AARCH64;
#endif

constexpr int pipe_size = 1 << 20;              ///< bytes; more needs rights
constexpr rlim_t most_memory = rlim_t(3) << 30; ///< bytes

void limit(__rlimit_resource what, rlim_t to)
{
    const rlimit both{to, to};
    (void)setrlimit(what, &both);
}

constexpr quint32 refused = SECCOMP_RET_ERRNO | EPERM;

// clang-format off
#define TARN_REFUSE(call, answer) \
    BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1), \
    BPF_STMT(BPF_RET | BPF_K, answer)

/// Refuses sockets and new processes; threads go on.
sock_filter call_filter[] = {
    BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
    BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, this_machine, 1, 0),
    BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
#ifdef __x86_64__
    BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, 0x40000000, 0, 1), // the same calls under other numbers
    BPF_STMT(BPF_RET | BPF_K, refused),
    TARN_REFUSE(SYS_fork, refused),
    TARN_REFUSE(SYS_vfork, refused),
#endif
    TARN_REFUSE(SYS_socket, refused),
    TARN_REFUSE(SYS_connect, refused),
    TARN_REFUSE(SYS_ptrace, refused),
    TARN_REFUSE(SYS_clone3, SECCOMP_RET_ERRNO | ENOSYS), // its flags cannot be seen: the C library takes clone
    BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 0, 3),
    BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args)),
    BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, CLONE_THREAD, 1, 0),
    BPF_STMT(BPF_RET | BPF_K, refused),
    BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
};
// clang-format on

/// Between fork and exec: nothing that takes memory.
void give_up_rights()
{
    // A whole picture has room: otherwise both processes wake each other for every piece of it.
    (void)fcntl(STDOUT_FILENO, F_SETPIPE_SZ, pipe_size);
    (void)prctl(PR_SET_PDEATHSIG, SIGKILL);
    (void)prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_DATA, most_memory);
    const sock_fprog filter{std::size(call_filter), call_filter};
    (void)prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter);
}

#else

void give_up_rights() {}

#endif

} // namespace

qint64 processor_time(qint64 process)
{
#ifdef Q_OS_LINUX
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    const QByteArray stat = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QByteArrayList fields
        = stat.mid(stat.lastIndexOf(')') + 2).split(' '); // behind the name, which may hold anything
    if (fields.size() > 12)
        return (fields[11].toLongLong() + fields[12].toLongLong()) * 1000 / sysconf(_SC_CLK_TCK);
#else
    Q_UNUSED(process)
#endif
    return -1;
}

void confine(QProcess& process)
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(QStringLiteral("/"));
#ifdef Q_OS_UNIX
    process.setChildProcessModifier(give_up_rights);
#endif
}

} // namespace tarn
