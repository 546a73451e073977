#include <Languages.h>

#include <host/Change.h>
#include <host/CommonUtils.h>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "TestLog.h"

namespace {

const QString kModule = QStringLiteral("NetInfoUIExPlugin");
const QString kBuilt = QStringLiteral(NETINFO_LANG_BUILT);

QString text(const char *key)
{
    return Change::tr(kModule, QLatin1String(key));
}

} // namespace

class tst_Languages : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void englishIsThereFromTheStart();
    void theBuiltLanguagesAreListedEnglishFirst();
    void theLanguageSwitchesAtRunTime();
    void theSameLanguageAgainChangesNothing();
    void aMissingTextAppearsInEnglish();
    void anUnknownLanguageChangesNothing_data();
    void anUnknownLanguageChangesNothing();
    void aBrokenFileChangesNothing();
    void anUnknownKeyGivesItself();
    void theContextCounts();
    void aFolderWithoutEnglishSaysSo();
    void namesOfRegionsFindTheirLanguage_data();
    void namesOfRegionsFindTheirLanguage();
    void theFormatterFollowsTheLanguage();
    void theTextsLeaveWithTheObject();

private:
    QScopedPointer<TestLog> m_log;
};

void tst_Languages::init()
{
    m_log.reset(new TestLog);
}

void tst_Languages::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

void tst_Languages::englishIsThereFromTheStart()
{
    const Languages languages(kBuilt);
    QVERIFY(languages.hasEnglish());
    QCOMPARE(languages.current(), QString("en"));
    QCOMPARE(text("IDS_TREE_SPEED"), QString("Speed:"));
}

void tst_Languages::theBuiltLanguagesAreListedEnglishFirst()
{
    const Languages languages(kBuilt);
    QCOMPARE(languages.available(), QStringList({ "en", "ar", "de", "es", "fr" }));
}

void tst_Languages::theLanguageSwitchesAtRunTime()
{
    Languages languages(kBuilt);
    QSignalSpy changed(&languages, &Languages::changed);
    QVERIFY(languages.use("de"));
    QCOMPARE(text("IDS_NO"), QString("Nein"));
    QVERIFY(languages.use("fr"));
    QCOMPARE(text("IDS_NO"), QString("Non"));
    QCOMPARE(text("IDS_TREE_SPEED"), QString("Vitesse :"));
    QVERIFY(languages.use("ar"));
    QCOMPARE(text("IDS_NO"), QString::fromUtf8("لا"));
    QVERIFY(languages.use("en"));
    QCOMPARE(text("IDS_NO"), QString("No"));
    QCOMPARE(changed.count(), 4);
}

void tst_Languages::theSameLanguageAgainChangesNothing()
{
    Languages languages(kBuilt);
    QVERIFY(languages.use("de"));
    QSignalSpy changed(&languages, &Languages::changed);
    QVERIFY(languages.use("de"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(text("IDS_NO"), QString("Nein"));
}

void tst_Languages::aMissingTextAppearsInEnglish()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::copy(kBuilt + "/skylet_en.qm", folder.filePath("skylet_en.qm")));
    QVERIFY(QFile::copy(NETINFO_SPARSE_LANG, folder.filePath("skylet_xx.qm")));
    Languages languages(folder.path());
    QVERIFY(languages.use("xx"));
    QCOMPARE(text("IDS_YES"), QString("Aye"));
    QCOMPARE(text("IDS_NO"), QString("No"));
}

void tst_Languages::anUnknownLanguageChangesNothing_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("none") << QString();
    QTest::newRow("not there") << "xx";
    QTest::newRow("a region is matched first, not used") << "de_AT";
    QTest::newRow("a path") << "../skylet_de";
}

void tst_Languages::anUnknownLanguageChangesNothing()
{
    QFETCH(QString, code);
    Languages languages(kBuilt);
    QVERIFY(languages.use("es"));
    QSignalSpy changed(&languages, &Languages::changed);
    QVERIFY(!languages.use(code));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(languages.current(), QString("es"));
    QCOMPARE(text("IDS_YES"), QString::fromUtf8("Sí"));
}

void tst_Languages::aBrokenFileChangesNothing()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::copy(kBuilt + "/skylet_en.qm", folder.filePath("skylet_en.qm")));
    QFile source(kBuilt + "/skylet_de.qm");
    QVERIFY(source.open(QIODevice::ReadOnly));
    QFile broken(folder.filePath("skylet_de.qm"));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write(source.read(10));
    broken.close();
    Languages languages(folder.path());
    QVERIFY(!languages.use("de"));
    QCOMPARE(languages.current(), QString("en"));
    QCOMPARE(text("IDS_NO"), QString("No"));
}

void tst_Languages::anUnknownKeyGivesItself()
{
    Languages languages(kBuilt);
    QVERIFY(languages.use("de"));
    QCOMPARE(text("IDS_THERE_IS_NO_SUCH_KEY"), QString("IDS_THERE_IS_NO_SUCH_KEY"));
}

void tst_Languages::theContextCounts()
{
    const Languages languages(kBuilt);
    QCOMPARE(Change::tr("skylet", "IDS_NO"), QString("IDS_NO"));
    QCOMPARE(Change::tr("skylet", "HOST_VIEW_USAGE"), QString("&Usage"));
}

void tst_Languages::aFolderWithoutEnglishSaysSo()
{
    const QTemporaryDir folder;
    const Languages languages(folder.path());
    QVERIFY(!languages.hasEnglish());
    QCOMPARE(languages.available(), QStringList("en"));
    QCOMPARE(text("IDS_NO"), QString("IDS_NO"));
}

void tst_Languages::namesOfRegionsFindTheirLanguage_data()
{
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("expected");
    QTest::newRow("itself") << "de"
                            << "de";
    QTest::newRow("region") << "de_AT"
                            << "de";
    QTest::newRow("region with a hyphen") << "fr-CA"
                                          << "fr";
    QTest::newRow("script and region") << "ar-Arab-EG"
                                       << "ar";
    QTest::newRow("not there") << "ja"
                               << "";
    QTest::newRow("not there, with a region") << "ja_JP"
                                              << "";
    QTest::newRow("none") << ""
                          << "";
    QTest::newRow("only a beginning") << "d"
                                      << "";
    QTest::newRow("only separators") << "_-_"
                                     << "";
}

void tst_Languages::namesOfRegionsFindTheirLanguage()
{
    const Languages languages(kBuilt);
    QFETCH(QString, wanted);
    QTEST(languages.match(wanted), "expected");
}

void tst_Languages::theFormatterFollowsTheLanguage()
{
    Languages languages(kBuilt);
    const QVector<TagUnits> units { { "KB", 1024, 1024, "IDS_UNIT_KB" } };
    QCOMPARE(CommonUtils::SpeedFluxToString(units, 2048, kModule), QString("2.00 KB"));
    QVERIFY(languages.use("fr"));
    QCOMPARE(CommonUtils::SpeedFluxToString(units, 2048, kModule), QString("2.00 Ko"));
    QCOMPARE(CommonUtils::SpeedUnitToString(units, kModule), QString("Ko"));
}

void tst_Languages::theTextsLeaveWithTheObject()
{
    {
        Languages languages(kBuilt);
        QVERIFY(languages.use("de"));
    }
    QCOMPARE(text("IDS_NO"), QString("IDS_NO"));
}

QTEST_GUILESS_MAIN(tst_Languages)
#include "tst_languages.moc"
