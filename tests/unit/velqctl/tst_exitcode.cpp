#include "ExitCode.h"

#include <host/velq_extension.h>

#include <QtTest>

using namespace velqctl;

class tst_ExitCode : public QObject
{
    Q_OBJECT
private slots:
    void disconnecting_data();
    void disconnecting();
    void connecting_data();
    void connecting();
    void anotherProcessThatCountsIsNamedWithItsStore();
    void aStoresProblemIsAFailure();
    void whatAnotherProcessCountsIsNoProblem();
    void anotherFailureIsNotReplaced();
};

void tst_ExitCode::disconnecting_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("code");
    QTest::newRow("done") << int(VELQ_DISCONNECT_DONE) << 0;
    QTest::newRow("failed") << int(VELQ_DISCONNECT_FAILED) << 1;
    QTest::newRow("no connection") << int(VELQ_DISCONNECT_NO_CONNECTION) << 4;
    QTest::newRow("no service") << int(VELQ_DISCONNECT_NO_SERVICE) << 5;
    QTest::newRow("not managed") << int(VELQ_DISCONNECT_NOT_MANAGED) << 5;
    QTest::newRow("refused") << int(VELQ_DISCONNECT_REFUSED) << 6;
    QTest::newRow("a later library's") << 99 << 1;
}

void tst_ExitCode::disconnecting()
{
    QFETCH(int, result);
    QFETCH(int, code);
    const Outcome outcome = disconnectOutcome(result);
    QCOMPARE(int(outcome.code), code);
    QCOMPARE(outcome.message.empty(), code == 0);
}

void tst_ExitCode::connecting_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("code");
    QTest::newRow("done") << int(VELQ_CONNECT_DONE) << 0;
    QTest::newRow("failed") << int(VELQ_CONNECT_FAILED) << 1;
    QTest::newRow("no device") << int(VELQ_CONNECT_NO_DEVICE) << 4;
    QTest::newRow("no profile") << int(VELQ_CONNECT_NO_PROFILE) << 4;
    QTest::newRow("no service") << int(VELQ_CONNECT_NO_SERVICE) << 5;
    QTest::newRow("not managed") << int(VELQ_CONNECT_NOT_MANAGED) << 5;
    QTest::newRow("refused") << int(VELQ_CONNECT_REFUSED) << 6;
    QTest::newRow("a later library's") << -1 << 1;
}

void tst_ExitCode::connecting()
{
    QFETCH(int, result);
    QFETCH(int, code);
    const Outcome outcome = connectOutcome(result);
    QCOMPARE(int(outcome.code), code);
    QCOMPARE(outcome.message.empty(), code == 0);
}

void tst_ExitCode::anotherProcessThatCountsIsNamedWithItsStore()
{
    const Outcome outcome = readOnlyOutcome({ false, "/d/velq.db", "" });
    QCOMPARE(int(outcome.code), 3);
    QVERIFY(outcome.message.find("/d/velq.db") != std::string::npos);
}

void tst_ExitCode::aStoresProblemIsAFailure()
{
    const Outcome outcome = withStoreProblem({ ExitCode::Good, "figures\n", {} },
                                             { true, "/d", "The disk is full." });
    QCOMPARE(int(outcome.code), 1);
    QCOMPARE(outcome.output, std::string("figures\n"));
    QCOMPARE(outcome.message, std::string("The disk is full."));
}

void tst_ExitCode::whatAnotherProcessCountsIsNoProblem()
{
    const Outcome outcome
        = withStoreProblem({ ExitCode::Good, "figures\n", {} }, { false, "/d", "It counts." });
    QCOMPARE(int(outcome.code), 0);
    QVERIFY(outcome.message.empty());
}

void tst_ExitCode::anotherFailureIsNotReplaced()
{
    const Outcome outcome
        = withStoreProblem({ ExitCode::NothingThere, {}, "none" }, { true, "/d", "Full." });
    QCOMPARE(int(outcome.code), 4);
    QCOMPARE(outcome.message, std::string("none"));
}

QTEST_GUILESS_MAIN(tst_ExitCode)
#include "tst_exitcode.moc"
