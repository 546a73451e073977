#include "counters/MessageStream.h"

#include <QtTest>

#include "ScriptedKernel.h"

using velq::MessageStream;
using Status = MessageStream::Answer::Status;

class tst_MessageStream : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void answersAndEventsKeepTheirOrder();
    void aSingleMessageIsAWholeAnswer();
    void theEndsOfAnswers_data();
    void theEndsOfAnswers();
    void anInterruptedAnswerIsReadToItsEnd();
    void lostEventsInterruptAnAnswer();
    void anAnswerThatCameTooLateIsSkipped();
    void withoutAnAnswerItFails_data();
    void withoutAnAnswerItFails();
    void aMessageCutShortEndsItsDatagram();
    void waitingEventsAreReadUntilNoneIsLeft();
    void endlessEventsAreLeftForLater();
    void endlessEventsDoNotHoldUpARequest();

private:
    [[nodiscard]] MessageStream::Answer ask();

    std::shared_ptr<Script> m_script;
    std::unique_ptr<MessageStream> m_stream;
    QByteArray m_visited; // "e": an event, "a": a part of an answer
};

void tst_MessageStream::init()
{
    m_visited.clear();
    m_script = std::make_shared<Script>();
    m_stream
        = std::make_unique<MessageStream>(std::make_unique<ScriptedKernel>(m_script),
                                          [this](const void *, std::size_t) { m_visited += 'e'; });
}

MessageStream::Answer tst_MessageStream::ask()
{
    Bytes request = messageBytes(RTM_GETLINK);
    return m_stream->ask(reinterpret_cast<nlmsghdr *>(request.data()),
                         [this](const void *, std::size_t) { m_visited += 'a'; });
}

void tst_MessageStream::answersAndEventsKeepTheirOrder()
{
    m_script->requested = [this] {
        m_script->event(linkBytes(1, 0, 0));
        m_script->answer(linkBytes(1, 0, 0));
        Bytes foreign = linkBytes(1, 0, 0); // caused by another program's request of our number
        overwrite(foreign, offsetof(nlmsghdr, nlmsg_seq), m_script->request.nlmsg_seq);
        overwrite(foreign, offsetof(nlmsghdr, nlmsg_pid), Script::kPort + 1);
        m_script->event(foreign);
        m_script->event(joined(linkBytes(1, 0, 0), linkBytes(2, 0, 0)));
        m_script->answer(linkBytes(2, 0, 0));
        m_script->answer(endBytes());
        m_script->event(linkBytes(1, 0, 0)); // stays
    };
    QCOMPARE(ask().status, Status::Whole);
    QCOMPARE(m_visited, QByteArray("eaeeea"));
    QVERIFY(m_stream->readEvents());
    QCOMPARE(m_visited, QByteArray("eaeeeae"));
}

void tst_MessageStream::aSingleMessageIsAWholeAnswer()
{
    m_script->requested = [this] { m_script->answer(linkBytes(1, 0, 0), 0); };
    QCOMPARE(ask().status, Status::Whole);
    QCOMPARE(m_visited, QByteArray("a"));
}

void tst_MessageStream::theEndsOfAnswers_data()
{
    QTest::addColumn<QByteArray>("last");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("error");
    const auto row = [](const char *name, const Bytes &bytes, Status status, int error) {
        QTest::newRow(name) << QByteArray(bytes.data(), int(bytes.size())) << int(status) << error;
    };
    row("the end", endBytes(), Status::Whole, 0);
    row("an end with an error", endBytes(EMSGSIZE), Status::Refused, EMSGSIZE);
    row("an end without a body", messageBytes(NLMSG_DONE), Status::Whole, 0);
    row("refused", errorBytes(-EOPNOTSUPP), Status::Refused, EOPNOTSUPP);
    row("done without an answer", errorBytes(0), Status::Whole, 0);
    row("an error without a body", messageBytes(NLMSG_ERROR), Status::Whole, 0);
    row("a positive error", errorBytes(5), Status::Whole, 0);
    row("an error that has no opposite", errorBytes(INT_MIN), Status::Whole, 0);
}

void tst_MessageStream::theEndsOfAnswers()
{
    QFETCH(QByteArray, last);
    m_script->requested = [this, &last] {
        m_script->answer(linkBytes(1, 0, 0));
        m_script->answer(Bytes(last.begin(), last.end()));
    };
    const auto answer = ask();
    QTEST(int(answer.status), "status");
    QTEST(answer.error, "error");
    QCOMPARE(m_visited, QByteArray("a"));
}

void tst_MessageStream::anInterruptedAnswerIsReadToItsEnd()
{
    m_script->requested = [this] {
        m_script->answer(linkBytes(1, 0, 0), NLM_F_MULTI | NLM_F_DUMP_INTR);
        m_script->answer(linkBytes(2, 0, 0));
        m_script->answer(endBytes());
    };
    QCOMPARE(ask().status, Status::Interrupted);
    QCOMPARE(m_visited, QByteArray("aa"));
    QVERIFY(!m_stream->takeLoss());
}

void tst_MessageStream::lostEventsInterruptAnAnswer()
{
    m_script->requested = [this] {
        m_script->lose();
        m_script->answer(linkBytes(1, 0, 0));
        m_script->answer(endBytes());
    };
    QCOMPARE(ask().status, Status::Interrupted);
    QVERIFY(m_stream->takeLoss());
    QVERIFY(!m_stream->takeLoss());
}

void tst_MessageStream::anAnswerThatCameTooLateIsSkipped()
{
    QCOMPARE(ask().status, Status::Failed);
    m_script->answer(linkBytes(1, 0, 0));
    m_script->requested = [this] {
        m_script->answer(linkBytes(2, 0, 0));
        m_script->answer(endBytes());
    };
    QCOMPARE(ask().status, Status::Whole);
    QCOMPARE(m_visited, QByteArray("a"));
}

void tst_MessageStream::withoutAnAnswerItFails_data()
{
    QTest::addColumn<int>("what");
    QTest::newRow("not sent") << 0;
    QTest::newRow("silence") << 1;
    QTest::newRow("silence after a part") << 2;
    QTest::newRow("a broken socket") << 3;
}

void tst_MessageStream::withoutAnAnswerItFails()
{
    QFETCH(int, what);
    m_script->sends = what != 0;
    m_script->requested = [this, what] {
        if (what == 2)
            m_script->answer(linkBytes(1, 0, 0));
        if (what == 3)
            m_script->fail();
    };
    QCOMPARE(ask().status, Status::Failed);
}

void tst_MessageStream::aMessageCutShortEndsItsDatagram()
{
    for (const unsigned length : { 0U, 15U, 4096U, 0x80000020U }) {
        Bytes second = linkBytes(2, 0, 0);
        overwrite(second, 0, length);
        m_script->event(joined(linkBytes(1, 0, 0), second));
    }
    m_script->event(firstBytes(linkBytes(1, 0, 0), 10));
    m_script->event({});
    QVERIFY(m_stream->readEvents());
    QCOMPARE(m_visited, QByteArray("eeee"));
}

void tst_MessageStream::waitingEventsAreReadUntilNoneIsLeft()
{
    m_script->event(linkBytes(1, 0, 0));
    m_script->lose();
    m_script->event(linkBytes(1, 0, 0));
    QVERIFY(m_stream->readEvents());
    QCOMPARE(m_visited, QByteArray("ee"));
    QVERIFY(m_stream->takeLoss());
    m_script->fail();
    QVERIFY(!m_stream->readEvents());
}

void tst_MessageStream::endlessEventsAreLeftForLater()
{
    m_script->event(linkBytes(1, 0, 0));
    m_script->repeats = true;
    QVERIFY(m_stream->readEvents());
    QVERIFY(m_visited.size() > 1000);
}

void tst_MessageStream::endlessEventsDoNotHoldUpARequest()
{
    m_script->event(linkBytes(1, 0, 0));
    m_script->repeats = true;
    QCOMPARE(ask().status, Status::Failed);
    QVERIFY(m_visited.size() > 1000);
}

QTEST_GUILESS_MAIN(tst_MessageStream)
#include "tst_messagestream.moc"
