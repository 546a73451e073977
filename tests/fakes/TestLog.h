#pragma once
// The one message handler of the tests: keeps the debug lines, fails on warnings nobody announced.

#include <QStringList>

//! Installed while it lives. Lines are kept with the time at their head replaced by "<time>".
class TestLog
{
public:
    TestLog();
    ~TestLog();
    TestLog(const TestLog &) = delete;
    TestLog &operator=(const TestLog &) = delete;

    //! Announces a warning that contains \a text, once.
    void expectWarning(const QString &text);
    //! Debug lines and announced warnings since the last call, in order.
    QStringList takeLines();
    //! Throws away what takeLines() would give.
    void dropLines();
    //! Warnings that came unannounced and announced ones that did not come, since the last call.
    QStringList takeProblems();
};
