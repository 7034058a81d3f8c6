#include "platform/workers/WorkerLimits.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iconv.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

#include "platform/Errors.h"

namespace torvex {

namespace {

#if defined(__x86_64__)
constexpr std::uint32_t machine = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t machine = AUDIT_ARCH_AARCH64;
#else
#error "which machine is this?"
#endif

/// Memory, time, and the socket that is open already. Nothing that names a file, a process or an address.
constexpr std::array allowedCalls{
    SYS_read,         SYS_write,           SYS_recvfrom,     SYS_sendto,
    SYS_close,        SYS_fstat,           SYS_lseek,        SYS_mmap,
    SYS_munmap,       SYS_mremap,          SYS_mprotect,     SYS_madvise,
    SYS_brk,          SYS_futex,           SYS_getpid,       SYS_gettid,
    SYS_rt_sigaction, SYS_rt_sigprocmask,  SYS_rt_sigreturn, SYS_sigaltstack,
    SYS_exit,         SYS_exit_group,      SYS_getrandom,    SYS_clock_gettime,
    SYS_gettimeofday, SYS_clock_nanosleep, SYS_nanosleep,    SYS_sched_yield,
    SYS_getrusage,    SYS_restart_syscall,
};

void limit(__rlimit_resource resource, rlim_t soft, rlim_t hard) {
    const rlimit value{soft, hard};
    if (::setrlimit(resource, &value) != 0) throw Error("a limit of the helper can't be set");
}

/// The bytes of addresses that this process has in use.
std::size_t addressSpace() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

/// The library loads its tables for each encoding when it is first used; later there are no files any more.
/// Never closed, so that they stay.
void loadEncodings() {
    for (const char* name :
         {"WINDOWS-1250", "WINDOWS-1251", "WINDOWS-1252", "WINDOWS-1253", "WINDOWS-1254", "WINDOWS-1255",
          "WINDOWS-1256", "WINDOWS-1257", "WINDOWS-1258", "ISO-8859-2",   "ISO-8859-3",   "ISO-8859-4",
          "ISO-8859-5",   "ISO-8859-6",   "ISO-8859-7",   "ISO-8859-8",   "ISO-8859-9",   "ISO-8859-10",
          "ISO-8859-13",  "ISO-8859-14",  "ISO-8859-15",  "ISO-8859-16",  "KOI8-R",       "KOI8-U",
          "SHIFT_JIS",    "EUC-JP",       "ISO-2022-JP",  "GB2312",       "GBK",          "GB18030",
          "BIG5",         "EUC-KR",       "TIS-620",      "UTF-16",       "UTF-32"}) {
        ::iconv_open("UTF-8", name);
        ::iconv_open(name, "UTF-8");
    }
}

sock_filter statement(std::uint16_t code, std::uint32_t value) {
    return {code, 0, 0, value};
}
sock_filter jump(std::uint32_t value, std::uint8_t ifTrue, std::uint8_t ifFalse) {
    return {BPF_JMP | BPF_JEQ | BPF_K, ifTrue, ifFalse, value};
}

void allow(std::vector<sock_filter>& filter, long call) {
    filter.push_back(jump(static_cast<std::uint32_t>(call), 0, 1));
    filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
}

/// The limit of processor time is set anew for each piece of work: this process's own, that is 0.
void allowOwnLimits(std::vector<sock_filter>& filter, std::uint32_t refused) {
    filter.push_back(jump(SYS_prlimit64, 0, 4));
    filter.push_back(statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args)));
    filter.push_back(jump(0, 0, 1));
    filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    filter.push_back(statement(BPF_RET | BPF_K, refused));
}

/// Every other call fails with EPERM.
void filterCalls() {
    constexpr std::uint32_t refused = SECCOMP_RET_ERRNO | 1;
    std::vector<sock_filter> filter{statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
                                    jump(machine, 1, 0), statement(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
                                    statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    allowOwnLimits(filter, refused);
    for (const auto call : allowedCalls) allow(filter, call);
    if (isSanitized) allow(filter, SYS_pipe2);
    filter.push_back(statement(BPF_RET | BPF_K, refused));
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    if (::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) {
        throw Error("the system's filter of calls can't be set");
    }
}

}  // namespace

void confineSelf(const WorkerLimits& limits) {
    loadEncodings();
    const auto memory = static_cast<rlim_t>(addressSpace() + limits.memory);
    limit(RLIMIT_AS, memory, memory);
    const auto descriptors = static_cast<rlim_t>(limits.descriptors);
    limit(RLIMIT_NOFILE, descriptors, descriptors);
    limit(RLIMIT_FSIZE, 0, 0);
    limit(RLIMIT_CORE, 0, 0);
    const auto life = static_cast<rlim_t>(limits.cpuSecondsOfLife);
    limit(RLIMIT_CPU, life, life);
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) throw Error("privileges can't be given up");
    filterCalls();
}

void allowProcessorTime(const WorkerLimits& limits) {
    const auto until = static_cast<int>(std::ceil(processorTime())) + limits.cpuSeconds;
    const auto life = static_cast<rlim_t>(limits.cpuSecondsOfLife);
    limit(RLIMIT_CPU, std::min(static_cast<rlim_t>(until), life), life);
}

double processorTime() {
    rusage used{};
    ::getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

}  // namespace torvex
