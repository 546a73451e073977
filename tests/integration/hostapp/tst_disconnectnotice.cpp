#include <DisconnectNotice.h>

#include <host/velq_extension.h>

#include <QSet>
#include <QtTest>

class tst_DisconnectNotice : public QObject
{
    Q_OBJECT
private slots:
    void everyResultHasItsOwnText();
    void onlyFailuresWarn_data();
    void onlyFailuresWarn();
    void aNoticeEndsWithItsState_data();
    void aNoticeEndsWithItsState();
};

void tst_DisconnectNotice::everyResultHasItsOwnText()
{
    QSet<QByteArray> keys;
    for (const int result :
         { VELQ_DISCONNECT_DONE, VELQ_DISCONNECT_FAILED, VELQ_DISCONNECT_NO_CONNECTION,
           VELQ_DISCONNECT_NO_SERVICE, VELQ_DISCONNECT_NOT_MANAGED, VELQ_DISCONNECT_REFUSED })
        keys.insert(disconnectNotice(result).key);
    QCOMPARE(int(keys.size()), 6);
    for (const int result : { -1, 6, 99999 })
        QCOMPARE(disconnectNotice(result).key, disconnectNotice(VELQ_DISCONNECT_FAILED).key);
}

void tst_DisconnectNotice::onlyFailuresWarn_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("warns");
    QTest::newRow("done") << int(VELQ_DISCONNECT_DONE) << false;
    QTest::newRow("no connection") << int(VELQ_DISCONNECT_NO_CONNECTION) << false;
    QTest::newRow("no service") << int(VELQ_DISCONNECT_NO_SERVICE) << true;
    QTest::newRow("not managed") << int(VELQ_DISCONNECT_NOT_MANAGED) << true;
    QTest::newRow("refused") << int(VELQ_DISCONNECT_REFUSED) << true;
    QTest::newRow("failed") << int(VELQ_DISCONNECT_FAILED) << true;
    QTest::newRow("unknown") << -1 << true;
}

void tst_DisconnectNotice::onlyFailuresWarn()
{
    QFETCH(int, result);
    QTEST(disconnectNotice(result).isWarning, "warns");
}

void tst_DisconnectNotice::aNoticeEndsWithItsState_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("over");
    QTest::newRow("done stays when it goes down") << int(VELQ_DISCONNECT_DONE) << false << false;
    QTest::newRow("done ends when it comes up") << int(VELQ_DISCONNECT_DONE) << true << true;
    QTest::newRow("none stays when it goes down")
        << int(VELQ_DISCONNECT_NO_CONNECTION) << false << false;
    QTest::newRow("none ends when it comes up")
        << int(VELQ_DISCONNECT_NO_CONNECTION) << true << true;
    QTest::newRow("a failure ends when it goes down")
        << int(VELQ_DISCONNECT_NO_SERVICE) << false << true;
    QTest::newRow("a failure ends when it comes up")
        << int(VELQ_DISCONNECT_REFUSED) << true << true;
}

void tst_DisconnectNotice::aNoticeEndsWithItsState()
{
    QFETCH(int, result);
    QFETCH(bool, connected);
    QTEST(isDisconnectNoticeOver(result, connected), "over");
}

QTEST_GUILESS_MAIN(tst_DisconnectNotice)
#include "tst_disconnectnotice.moc"
