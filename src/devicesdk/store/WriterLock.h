#pragma once

#include <string>

namespace velq {

/*! The right to write to a store, held by one process at a time through a lock file. */
class WriterLock
{
public:
    enum class Result {
        Taken,
        Held, //!< another process has it
        Failed //!< see error()
    };

    WriterLock() = default;
    ~WriterLock();
    WriterLock(const WriterLock &) = delete;
    WriterLock &operator=(const WriterLock &) = delete;

    //! Takes the lock on the file \a path, which is made when missing. Taken stays taken, unless
    //! the file is another one now.
    [[nodiscard]] Result take(const std::string &path);
    //! Whether \a path still is the file that is locked: another process would take a new one.
    [[nodiscard]] bool isIn(const std::string &path) const;
    //! Gives it back. In a forked child this leaves the parent's lock alone: use abandon() there.
    void release();
    //! Drops a child's inherited handle, so that the lock ends with the parent.
    void abandon();
    [[nodiscard]] int error() const
    {
        return m_error;
    } //!< errno of the failure

private:
    int m_file = -1;
    int m_error = 0;
};

} // namespace velq
