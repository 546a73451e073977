#include <Languages.h>
#include <PluginContainer.h>
#include <StartupHost.h>

#include <host/IUIPlugin.h>
#include <host/Startup.h>

#include <QtTest>

#include "LibraryFolder.h"
#include "TestLog.h"

namespace {

const QString kGoodId = QStringLiteral("TEST-PAGE");
const QString kConnectionId = QStringLiteral("D0B83E56-19F2-4C6A-B7E4-05A9C31D8F62");

} // namespace

class tst_PluginContainer : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void aGoodPluginIsThere();
    void itAnswersByIdentifierAndKind();
    void anUnknownOrEmptyIdentifierIsNothing();
    void aMissingFolderIsSaid();
    void anEmptyFolderIsSaid();
    void aFolderWithoutALibraryIsSaid();
    void badFilesAreSaid_data();
    void badFilesAreSaid();
    void everyTruncationIsSurvived();
    void aLibraryThatVanishesIsNothing();
    void badOnesDoNotHinderGoodOnes();
    void versionLinksAreOnePlugin();
    void theSameIdentifierTwiceIsSaid();
    void theHostItselfMayBeAPlugin();
    void aBuiltInObjectAnswersItsKindAlone();
    void startupAnswersTheContainer();
    void destroyReachesThePlugin();

private:
    QScopedPointer<LibraryFolder> m_folder;
    QScopedPointer<Languages> m_languages;
    QScopedPointer<TestLog> m_log;
};

void tst_PluginContainer::initTestCase()
{
    m_languages.reset(new Languages(NETINFO_LANG_BUILT));
    QVERIFY(m_languages->hasEnglish());
}

void tst_PluginContainer::init()
{
    m_folder.reset(new LibraryFolder);
    m_log.reset(new TestLog);
}

void tst_PluginContainer::cleanup()
{
    StartupHost::setPluginContainer(nullptr);
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

void tst_PluginContainer::aGoodPluginIsThere()
{
    const QString file = m_folder->addModule("one", "good");
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.failures().size(), 0);
    QCOMPARE(container.plugins().size(), 1);
    auto *plugin = qobject_cast<IUIPlugin *>(container.plugins().constFirst());
    QVERIFY(plugin);
    QCOMPARE(plugin->GetPluginName(), QString("PagePlugin"));
    QCOMPARE(container.fileOf(container.plugins().constFirst()), file);
    QVERIFY(container.fileOf(this).isEmpty());
}

void tst_PluginContainer::itAnswersByIdentifierAndKind()
{
    m_folder->addModule("one", "good");
    PluginContainer container(m_folder->path());
    QVERIFY(!container.IsPluginAvailable(kGoodId));
    container.load();
    QVERIFY(container.IsPluginAvailable(kGoodId));
    QCOMPARE(container.GetPlugin(kGoodId, 4098), container.plugins().constFirst());
    QVERIFY(!container.GetPlugin(kGoodId, 0));
}

void tst_PluginContainer::anUnknownOrEmptyIdentifierIsNothing()
{
    m_folder->addModule("one", "good");
    PluginContainer container(m_folder->path());
    container.load();
    for (const QString &id : { QString(), QString(""), QString("other"), kGoodId.toLower() }) {
        QVERIFY(!container.IsPluginAvailable(id));
        QVERIFY(!container.GetPlugin(id, 4098));
    }
}

void tst_PluginContainer::aMissingFolderIsSaid()
{
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.failures().size(), 1);
    QCOMPARE(container.failures().constFirst().text(),
             QStringLiteral("Plug-in %1/plugins: There is no such folder.").arg(m_folder->path()));
}

void tst_PluginContainer::anEmptyFolderIsSaid()
{
    m_folder->makePlugins();
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.failures().size(), 1);
    QCOMPARE(
        container.failures().constFirst().text(),
        QStringLiteral("Plug-in %1/plugins: The folder holds no plug-ins.").arg(m_folder->path()));
}

void tst_PluginContainer::aFolderWithoutALibraryIsSaid()
{
    const QString folder = m_folder->makeFolder("empty");
    const QString other = QFileInfo(m_folder->addFile("texts", "readme.txt", "text")).path();
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.failures().size(), 2);
    QCOMPARE(container.failures().at(0).file, folder);
    QCOMPARE(container.failures().at(1).file, other);
    QCOMPARE(container.failures().at(1).reason, QString("The folder holds no library."));
}

void tst_PluginContainer::badFilesAreSaid_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const QString cannot = QStringLiteral("It cannot be loaded: ");
    const QByteArray good = LibraryFolder::contentOf("good");
    QTest::newRow("an empty file") << QByteArray() << "The file is empty or cannot be read.";
    QTest::newRow("a text") << QByteArray("just a text\n") << cannot;
    QTest::newRow("a long text") << QByteArray(100000, 'x') << cannot;
    QTest::newRow("the head of a library") << good.left(3000) << cannot;
    QTest::newRow("a library that is no plug-in") << LibraryFolder::contentOf("plain") << cannot;
    QTest::newRow("a plug-in that needs what is not there")
        << LibraryFolder::contentOf("unresolved") << cannot;
    QTest::newRow("a plug-in of another program")
        << LibraryFolder::contentOf("foreign") << "It is not a plug-in for this program.";
    QTest::newRow("a plug-in for another Qt")
        << LibraryFolder::contentOfNextQt("good")
        << QStringLiteral("It was built for Qt %1, but this program uses Qt %2.")
               .arg(QT_VERSION_MAJOR + 1)
               .arg(QT_VERSION_MAJOR);
}

void tst_PluginContainer::badFilesAreSaid()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    const QString file = m_folder->addFile("bad", "bad.so", content);
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.plugins().size(), 0);
    QCOMPARE(container.failures().size(), 1);
    const PluginFailure failure = container.failures().constFirst();
    QCOMPARE(failure.file, file);
    QVERIFY2(failure.reason.startsWith(reason), qPrintable(failure.reason));
    QVERIFY2(!failure.reason.contains(file), qPrintable(failure.reason));
    QVERIFY2(failure.reason.size() > 20, qPrintable(failure.reason));
}

// In steps that take the head of the file byte by byte and the rest coarsely.
void tst_PluginContainer::everyTruncationIsSurvived()
{
    const QByteArray good = LibraryFolder::contentOf("foreign");
    int expected = 0;
    for (qsizetype size = 0; size < good.size(); size += size < 128 ? 1 : good.size() / 64) {
        m_folder->addFile("cut", QStringLiteral("cut%1.so").arg(size), good.left(int(size)));
        ++expected;
    }
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.plugins().size(), 0);
    QCOMPARE(container.failures().size(), expected);
}

void tst_PluginContainer::aLibraryThatVanishesIsNothing()
{
    m_folder->makeFolder("gone");
    QVERIFY(QFile::link("/nowhere/at/all.so", m_folder->path() + "/plugins/gone/all.so"));
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.failures().size(), 1);
    QCOMPARE(container.failures().constFirst().reason, QString("The folder holds no library."));
}

void tst_PluginContainer::badOnesDoNotHinderGoodOnes()
{
    m_folder->addFile("a", "text.so", "text");
    m_folder->makeFolder("b");
    m_folder->addModule("c", "foreign");
    m_folder->addModule("d", "good");
    m_folder->addFile("e", "later.so", "text");
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.failures().size(), 4);
    QCOMPARE(container.plugins().size(), 1);
    QVERIFY(container.IsPluginAvailable(kGoodId));
}

void tst_PluginContainer::versionLinksAreOnePlugin()
{
    const QString file = m_folder->addModule("one", "good");
    QVERIFY(QFile::link(file, file + ".1"));
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.failures().size(), 0);
    QCOMPARE(container.plugins().size(), 1);
}

void tst_PluginContainer::theSameIdentifierTwiceIsSaid()
{
    m_folder->addModule("one", "good");
    const QString second = m_folder->addModule("two", "good");
    PluginContainer container(m_folder->path());
    container.load();
    QCOMPARE(container.plugins().size(), 1);
    QCOMPARE(container.failures().size(), 1);
    QCOMPARE(container.failures().constFirst().file, second);
    QCOMPARE(container.failures().constFirst().reason,
             QString("Its identifier already belongs to PagePlugin."));
}

void tst_PluginContainer::theHostItselfMayBeAPlugin()
{
    PluginContainer container(m_folder->path());
    QVERIFY(!container.IsPluginAvailable(kConnectionId));
    container.addBuiltIn(kConnectionId);
    QVERIFY(container.IsPluginAvailable(kConnectionId));
    QVERIFY(!container.GetPlugin(kConnectionId, 0));
    QVERIFY(!container.GetPlugin(kConnectionId, 1));
    container.removeBuiltIn(kConnectionId);
    QVERIFY(!container.IsPluginAvailable(kConnectionId));
}

void tst_PluginContainer::aBuiltInObjectAnswersItsKindAlone()
{
    PluginContainer container(m_folder->path());
    {
        QObject service;
        container.addBuiltIn(kConnectionId, &service, 8209);
        QCOMPARE(container.GetPlugin(kConnectionId, 8209), &service);
        for (const int kind : { 0, -1, 1, 4098, 8208, 8210 })
            QVERIFY(!container.GetPlugin(kConnectionId, kind));
        QVERIFY(!container.GetPlugin(kGoodId, 8209));
    }
    QVERIFY(!container.GetPlugin(kConnectionId, 8209)); // it died before the container
    QVERIFY(container.IsPluginAvailable(kConnectionId));
}

void tst_PluginContainer::startupAnswersTheContainer()
{
    QVERIFY(!Startup::GetPluginContainer());
    PluginContainer container(m_folder->path());
    StartupHost::setPluginContainer(&container);
    QCOMPARE(Startup::GetPluginContainer(), static_cast<IPluginContainer *>(&container));
}

void tst_PluginContainer::destroyReachesThePlugin()
{
    m_folder->addModule("one", "good");
    PluginContainer container(m_folder->path());
    container.load();
    QObject *plugin = container.plugins().constFirst();
    container.destroyPlugins();
    QCOMPARE(plugin->property("calls").toStringList(), QStringList("OnDestroy"));
}

QTEST_GUILESS_MAIN(tst_PluginContainer)
#include "tst_plugincontainer.moc"
