#include "CallTracer.h"

#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>

namespace {

//! A child that waits for its parent before it begins; gone at the latest with this object.
class Child
{
public:
    explicit Child(const std::function<void()> &work)
        : m_process(fork())
    {
        if (m_process == 0) {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
                _exit(1);
            (void)raise(SIGSTOP);
            work();
            _exit(0);
        }
        m_traced = m_process > 0 && waitpid(m_process, &m_status, 0) == m_process
            && WIFSTOPPED(m_status)
            && ptrace(PTRACE_SETOPTIONS, m_process, nullptr,
                      PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD)
                == 0;
    }
    ~Child()
    {
        kill();
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    [[nodiscard]] bool isTraced() const
    {
        return m_traced;
    }
    [[nodiscard]] pid_t process() const
    {
        return m_process;
    }
    //! Runs to the next stop before or after a system call; false when the child has ended.
    [[nodiscard]] bool toNextStop()
    {
        constexpr int kSystemCallStop = SIGTRAP | 0x80;
        int signal = 0;
        for (;;) {
            if (ptrace(PTRACE_SYSCALL, m_process, nullptr, signal) != 0
                || waitpid(m_process, &m_status, 0) != m_process)
                return false;
            if (!WIFSTOPPED(m_status)) {
                m_alive = false;
                return false;
            }
            if (WSTOPSIG(m_status) == kSystemCallStop)
                return true;
            signal = WSTOPSIG(m_status);
        }
    }
    [[nodiscard]] bool endedWell() const
    {
        return !m_alive && WIFEXITED(m_status) && WEXITSTATUS(m_status) == 0;
    }
    void kill()
    {
        if (m_process > 0 && m_alive) {
            (void)::kill(m_process, SIGKILL);
            (void)waitpid(m_process, &m_status, 0);
        }
        m_alive = false;
    }

private:
    pid_t m_process;
    int m_status = 0;
    bool m_traced = false;
    bool m_alive = true;
};

#ifdef __x86_64__
bool isAboutMemoryOrSignals(long call)
{
    constexpr long kCalls[]
        = { SYS_brk,   SYS_mmap,         SYS_munmap,         SYS_mprotect, SYS_madvise,
            SYS_futex, SYS_rt_sigaction, SYS_rt_sigprocmask, SYS_tgkill,   SYS_sigaltstack,
            SYS_exit,  SYS_exit_group,   SYS_mremap };
    for (const long known : kCalls) {
        if (call == known)
            return true;
    }
    return false;
}

constexpr auto kCallRegister = offsetof(user_regs_struct, orig_rax);
constexpr auto kResultRegister = offsetof(user_regs_struct, rax);
constexpr auto kThirdArgument = offsetof(user_regs_struct, rdx);
#endif

} // namespace

TraceResult killAtStop(const std::function<void()> &work, int stop)
{
    TraceResult result;
    Child child(work);
    result.possible = child.isTraced();
    while (result.possible && child.toNextStop()) {
        if (++result.stops == stop) {
            child.kill();
            return result;
        }
    }
    result.finished = child.endedWell();
    return result;
}

TraceResult failCall(const std::function<void()> &work, int call, int error)
{
    TraceResult result;
#ifdef __x86_64__
    Child child(work);
    result.possible = child.isTraced();
    while (result.possible && child.toNextStop()) {
        const long number = ptrace(PTRACE_PEEKUSER, child.process(), kCallRegister, nullptr);
        const bool counts = !isAboutMemoryOrSignals(number);
        if (counts)
            result.calls.append(number);
        const bool fails = counts && result.calls.size() == call;
        if (fails)
            (void)ptrace(PTRACE_POKEUSER, child.process(), kCallRegister, -1L);
        if (!child.toNextStop()) // after the call
            break;
        if (fails)
            (void)ptrace(PTRACE_POKEUSER, child.process(), kResultRegister, long(-error));
    }
    result.finished = child.endedWell();
#else
    (void)work;
    (void)call;
    (void)error;
#endif
    return result;
}

TraceResult shortenWrites(const std::function<void()> &work, long most)
{
    TraceResult result;
#ifdef __x86_64__
    Child child(work);
    result.possible = child.isTraced();
    while (result.possible && child.toNextStop()) {
        const long number = ptrace(PTRACE_PEEKUSER, child.process(), kCallRegister, nullptr);
        result.calls.append(number);
        if (number == SYS_write
            && ptrace(PTRACE_PEEKUSER, child.process(), kThirdArgument, nullptr) > most)
            (void)ptrace(PTRACE_POKEUSER, child.process(), kThirdArgument, most);
        if (!child.toNextStop()) // after the call
            break;
    }
    result.finished = child.endedWell();
#else
    (void)work;
    (void)most;
#endif
    return result;
}
