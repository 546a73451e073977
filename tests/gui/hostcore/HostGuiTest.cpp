#include "HostGuiTest.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

void HostGuiTest::init()
{
    m_log.reset(new TestLog);
}

void HostGuiTest::cleanup()
{
    QApplication::setLayoutDirection(Qt::LeftToRight);
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}
