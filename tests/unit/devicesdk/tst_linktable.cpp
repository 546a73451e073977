#include "counters/LinkTable.h"

#include "counters/LinkMessage.h"
#include "counters/StatsMessage.h"

#include <QtTest>

#include <map>
#include <memory>

using velq::LinkMessage;
using velq::LinkStep;
using velq::LinkTable;

namespace {

LinkMessage message(int index, std::uint64_t download, std::uint64_t upload, bool up = true)
{
    LinkMessage message;
    message.index = index;
    message.name = "link" + std::to_string(index);
    message.up = up;
    message.hasCounters = true;
    message.download = download;
    message.upload = upload;
    return message;
}

LinkMessage deletion(int index, std::uint64_t download = 0, std::uint64_t upload = 0)
{
    LinkMessage deletion = message(index, download, upload, false);
    deletion.deleted = true;
    return deletion;
}

LinkMessage note(int index, bool up)
{
    LinkMessage message;
    message.index = index;
    message.up = up;
    return message;
}

QString text(const std::optional<velq::LinkCounters> &counters)
{
    return counters ? QStringLiteral("%1/%2").arg(counters->download).arg(counters->upload)
                    : QStringLiteral("-");
}

//! A step in a line: what, which link, its state, its counters; "from" for a base, "!" for events.
QString text(const LinkStep &step)
{
    const char *const kinds[] = { "appeared", "changed", "gone", "counted" };
    QString line = QStringLiteral("%1 %2").arg(kinds[int(step.kind)]).arg(step.link.index);
    if (step.link.instance != 0)
        line += QStringLiteral(".%1").arg(step.link.instance);
    if (!step.link.name.empty())
        line += step.link.up ? " up" : " down";
    if (step.counters)
        line += ' ' + text(step.counters);
    if (step.base)
        line += " from " + text(step.base);
    return step.fromEvent ? line + '!' : line;
}

} // namespace

class tst_LinkTable : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void theFirstListHasNoBase();
    void aNewLinkStartsWithItsOwnCounters();
    void aLinkFoundAfterLostEventsIsCountedFromZero();
    void anotherInstanceIsAnotherLink_data();
    void anotherInstanceIsAnotherLink();
    void aDeletedLinkHasItsLastCounters();
    void whatIsCountedLateIsInTheDeletion();
    void aClosedPairKeepsItsDownload();
    void whatDidNotChangeIsOnlyCounted();
    void everyChangeIsTold_data();
    void everyChangeIsTold();
    void anAnswerBehindAnEventIsOlder();
    void aLinkThatIsNotListedIsGone();
    void aDriversNoteChangesFlagsAlone();
    void aNoteOfAnUnknownLinkAsksForAList();
    void countersOfUnknownLinksAreIgnored();
    void disconnecting_data();
    void disconnecting();
    void aFullListKeepsTheOrderOfIndexes();

private:
    void list(const std::vector<LinkMessage> &links);
    [[nodiscard]] QString steps();

    std::unique_ptr<LinkTable> m_table;
    std::map<int, std::uint64_t> m_instances;
};

void tst_LinkTable::init()
{
    m_instances.clear();
    m_table = std::make_unique<LinkTable>([this](const std::string &, int index) {
        const auto found = m_instances.find(index);
        return velq::LinkPlace { found == m_instances.end() ? 0 : found->second, false };
    });
}

void tst_LinkTable::list(const std::vector<LinkMessage> &links)
{
    m_table->beginAnswer();
    for (const LinkMessage &link : links)
        m_table->applyAnswer(link);
    m_table->endAnswer();
}

QString tst_LinkTable::steps()
{
    QStringList lines;
    for (const LinkStep &step : m_table->takeSteps())
        lines.append(text(step));
    return lines.join(QStringLiteral("; "));
}

void tst_LinkTable::theFirstListHasNoBase()
{
    QVERIFY(!m_table->wasComplete());
    m_table->applyEvent(message(3, 1, 2)); // between the opening and the first list
    list({ message(1, 10, 20), message(3, 5, 6), message(7, 0, 0, false) });
    QCOMPARE(steps(),
             QString("appeared 3 up 1/2!; appeared 1 up 10/20; counted 3 5/6; "
                     "appeared 7 down 0/0"));
    QVERIFY(m_table->isComplete());
    QVERIFY(m_table->wasComplete());
}

void tst_LinkTable::aNewLinkStartsWithItsOwnCounters()
{
    list({});
    m_table->applyEvent(message(5, 700, 800, false));
    m_table->applyEvent(message(5, 701, 802));
    m_table->applyStats({ 5, 900, 900 }); // older than the event, or not: the next one tells
    m_table->beginAnswer();
    m_table->applyStats({ 5, 901, 902 });
    QCOMPARE(steps(),
             QString("appeared 5 down 700/800 from 700/800!; changed 5 up 701/802!; "
                     "counted 5 901/902"));
}

void tst_LinkTable::aLinkFoundAfterLostEventsIsCountedFromZero()
{
    list({ message(1, 1, 1) });
    QCOMPARE(steps(), QString("appeared 1 up 1/1"));
    m_table->noteLoss();
    QVERIFY(!m_table->isComplete());
    m_table->applyEvent(message(6, 30, 40));
    list({ message(1, 2, 2), message(5, 10, 20), message(6, 31, 41) });
    QCOMPARE(steps(),
             QString("appeared 6 up 30/40 from 0/0!; counted 1 2/2; "
                     "appeared 5 up 10/20 from 0/0; counted 6 31/41"));
    QVERIFY(m_table->isComplete());
}

void tst_LinkTable::anotherInstanceIsAnotherLink_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<QString>("expected");
    QTest::newRow("another") << 8 << 9 << "gone 5.8; appeared 5.9 up 60/60 from 0/0";
    QTest::newRow("the same") << 8 << 8 << "counted 5.8 60/60";
    QTest::newRow("not known before") << 0 << 9 << "counted 5 60/60";
    QTest::newRow("not known after") << 8 << 0 << "counted 5.8 60/60";
}

void tst_LinkTable::anotherInstanceIsAnotherLink()
{
    QFETCH(int, before);
    QFETCH(int, after);
    m_instances[5] = std::uint64_t(before);
    list({ message(5, 50, 50) });
    (void)steps();
    m_instances[5] = std::uint64_t(after);
    m_table->applyEvent(message(5, 55, 55)); // nothing was lost: it is the same
    QCOMPARE(steps().startsWith("counted 5"), true);
    m_table->noteLoss();
    list({ message(5, 60, 60) });
    QTEST(steps(), "expected");
}

void tst_LinkTable::aDeletedLinkHasItsLastCounters()
{
    m_instances[5] = 8;
    list({ message(5, 50, 50) });
    m_table->applyEvent(message(5, 70, 80, false));
    m_table->applyEvent(deletion(5));
    m_table->applyEvent(deletion(5)); // of a link that is not known
    m_instances[5] = 9;
    m_table->applyEvent(message(5, 0, 0, false));
    QCOMPARE(steps(),
             QString("appeared 5.8 up 50/50; changed 5.8 down 70/80!; gone 5.8 70/80!; "
                     "appeared 5.9 down 0/0 from 0/0!"));
}

void tst_LinkTable::whatIsCountedLateIsInTheDeletion()
{
    list({ message(5, 50, 50), message(6, 50, 50) });
    (void)steps();
    m_table->applyEvent(deletion(5, 51, 49));
    m_table->applyEvent(deletion(6, 0, 52));
    QCOMPARE(steps(), QString("gone 5 51/50!; gone 6 50/52!"));
}

void tst_LinkTable::aClosedPairKeepsItsDownload()
{
    list({ message(5, 50, 50), message(6, 50, 50), message(7, 50, 50) });
    (void)steps();
    m_table->applyEvent(message(5, 0, 80, false)); // its download was the peer's upload
    m_table->applyEvent(message(6, 0, 80)); // up: a counter fell
    m_table->applyEvent(message(7, 0, 0, false)); // both: a driver began anew
    QCOMPARE(steps(), QString("changed 5 down 50/80!; counted 6 0/80!; changed 7 down 0/0!"));
}

void tst_LinkTable::whatDidNotChangeIsOnlyCounted()
{
    list({ message(5, 1, 1) });
    (void)steps();
    m_table->applyEvent(message(5, 2, 2));
    list({ message(5, 3, 3) });
    QCOMPARE(steps(), QString("counted 5 2/2!; counted 5 3/3"));
}

void tst_LinkTable::everyChangeIsTold_data()
{
    QTest::addColumn<int>("what");
    QTest::newRow("name") << 0;
    QTest::newRow("kind") << 1;
    QTest::newRow("hardware address") << 2;
    QTest::newRow("link below") << 3;
    QTest::newRow("bridge") << 4;
    QTest::newRow("state") << 5;
}

void tst_LinkTable::everyChangeIsTold()
{
    QFETCH(int, what);
    list({ message(5, 1, 1) });
    (void)m_table->takeSteps();
    LinkMessage now = message(5, 2, 2, what != 5);
    now.name = what == 0 ? "other" : now.name;
    now.kind = what == 1 ? "veth" : "";
    now.hardwareAddress = what == 2 ? "02:00:5e:10:00:01" : "";
    now.lowerIndex = what == 3 ? 4 : 0;
    now.masterIndex = what == 4 ? 4 : 0;
    m_table->applyEvent(now);
    const auto steps = m_table->takeSteps();
    QCOMPARE(steps.size(), std::size_t(1));
    const velq::Link &link = steps.front().link;
    QCOMPARE(steps.front().kind, LinkStep::Kind::Changed);
    QCOMPARE(link.name, now.name);
    QCOMPARE(link.kind, now.kind);
    QCOMPARE(link.hardwareAddress, now.hardwareAddress);
    QCOMPARE(link.lowerIndex, now.lowerIndex);
    QCOMPARE(link.masterIndex, now.masterIndex);
    QCOMPARE(link.up, now.up);
    QCOMPARE(steps.front().counters->upload, quint64(2));
}

void tst_LinkTable::anAnswerBehindAnEventIsOlder()
{
    list({ message(4, 10, 10), message(5, 10, 10), message(6, 10, 10) });
    (void)steps();
    m_table->beginAnswer();
    m_table->applyEvent(message(4, 20, 20, false));
    m_table->applyEvent(deletion(5));
    m_table->applyEvent(message(7, 0, 0));
    m_table->applyAnswer(message(4, 15, 15));
    m_table->applyStats({ 4, 15, 15 });
    m_table->applyAnswer(message(5, 15, 15));
    m_table->applyAnswer(message(6, 15, 15)); // does not list 7 yet
    m_table->endAnswer();
    QCOMPARE(
        steps(),
        QString(
            "changed 4 down 20/20!; gone 5 10/10!; appeared 7 up 0/0 from 0/0!; counted 6 15/15"));
    list({ message(4, 21, 21), message(6, 16, 16), message(7, 1, 1) }); // from now on it counts
    QCOMPARE(steps(), QString("changed 4 up 21/21; counted 6 16/16; counted 7 1/1"));
}

void tst_LinkTable::aLinkThatIsNotListedIsGone()
{
    list({ message(4, 10, 10), message(5, 10, 10) });
    (void)steps();
    m_table->beginAnswer();
    m_table->applyAnswer(message(5, 11, 11));
    QCOMPARE(steps(), QString("counted 5 11/11")); // a list that did not end tells no more
    list({ message(5, 12, 12) });
    QCOMPARE(steps(), QString("counted 5 12/12; gone 4"));
}

void tst_LinkTable::aDriversNoteChangesFlagsAlone()
{
    LinkMessage wifi = message(5, 10, 10);
    wifi.masterIndex = 2;
    list({ wifi });
    (void)steps();
    m_table->applyEvent(note(5, true));
    QCOMPARE(steps(), QString());
    m_table->applyEvent(note(5, false));
    const auto steps = m_table->takeSteps();
    QCOMPARE(steps.size(), std::size_t(1));
    QCOMPARE(text(steps.front()), QString("changed 5 down!"));
    QCOMPARE(steps.front().link.masterIndex, 2);
}

void tst_LinkTable::aNoteOfAnUnknownLinkAsksForAList()
{
    list({});
    m_table->applyEvent(note(5, true));
    QVERIFY(!m_table->isComplete());
    QCOMPARE(steps(), QString());
}

void tst_LinkTable::countersOfUnknownLinksAreIgnored()
{
    list({ message(5, 10, 10) });
    (void)steps();
    m_table->beginAnswer();
    m_table->applyStats({ 4, 1, 1 });
    m_table->applyStats({ 6, 1, 1 });
    QCOMPARE(steps(), QString());
}

void tst_LinkTable::disconnecting_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<QString>("expected");
    QTest::newRow("an address") << 0 << "changed 5 up!";
    QTest::newRow("an address of another link") << 1 << "";
    QTest::newRow("an event that finds it up") << 2 << "counted 5 2/2!";
    QTest::newRow("down and up") << 3 << "counted 5 2/2!; changed 5 up 3/3!";
    QTest::newRow("lost events") << 4 << "changed 5 up!";
    QTest::newRow("deleted and made again") << 5 << "gone 5 1/1!; appeared 5 up 2/2 from 2/2!";
}

void tst_LinkTable::disconnecting()
{
    QFETCH(int, what);
    list({ message(4, 1, 1, false), message(5, 1, 1), message(6, 1, 1) });
    (void)steps();
    for (const int index : { 3, 4, 5, 5, 6 }) // 3 is not known, 4 is down
        m_table->noteDisconnect(index);
    QCOMPARE(steps(), QString("changed 5 down!; changed 6 down!"));
    m_table->noteConnect(6);
    QCOMPARE(steps(), QString("changed 6 up!"));
    if (what < 2)
        m_table->noteConnect(what == 0 ? 5 : 4);
    if (what == 4)
        m_table->noteLoss();
    if (what == 5)
        m_table->applyEvent(deletion(5));
    if (what == 2 || what == 3 || what == 5)
        m_table->applyEvent(message(5, 2, 2, what != 3));
    if (what == 3)
        m_table->applyEvent(message(5, 3, 3));
    QTEST(steps(), "expected");
}

void tst_LinkTable::aFullListKeepsTheOrderOfIndexes()
{
    list({ message(9, 9, 9), message(2, 2, 2), message(5, 5, 5) });
    (void)steps();
    for (const int index : { 2, 5, 9 })
        m_table->applyStats({ index, quint64(index), quint64(index) });
    QCOMPARE(steps(), QString("counted 2 2/2; counted 5 5/5; counted 9 9/9"));
}

QTEST_GUILESS_MAIN(tst_LinkTable)
#include "tst_linktable.moc"
