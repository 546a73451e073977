#pragma once
// Runs a piece of work in a child process that stops at each of its system calls.

#include <QByteArray>
#include <QList>

#include <functional>

//! What became of the child.
struct TraceResult
{
    bool possible = false; //!< false where this process may not trace its children
    bool finished = false; //!< the work came to its end
    int stops = 0; //!< times the child stood before or after a system call
    QList<long> calls; //!< the numbers of its system calls
};

//! Kills the child at its stop number \a stop, counted from 1: before or after a system call. 0
//! lets it finish.
[[nodiscard]] TraceResult killAtStop(const std::function<void()> &work, int stop);

//! Lets system call number \a call, counted from 1, do nothing and fail with \a error; calls for
//! memory and signals are neither counted nor listed. 0 lets all of them through. Not possible on
//! processors other than x86-64.
[[nodiscard]] TraceResult failCall(const std::function<void()> &work, int call, int error);

//! Lets each write put out \a most bytes at the most. Not possible on other processors either.
[[nodiscard]] TraceResult shortenWrites(const std::function<void()> &work, long most);
