#include <QDir>
#include <QMap>
#include <QRegularExpression>
#include <QtTest>
#include <QXmlStreamReader>

namespace {

using Texts = QMap<QString, QString>; // "context/key" to text

struct Catalogue
{
    QString language;
    Texts texts;
    QStringList problems; //!< doubled keys, unfinished or vanished entries, XML errors
};

void readMessage(QXmlStreamReader *xml, const QString &context, Catalogue *catalogue)
{
    QString key;
    while (xml->readNextStartElement()) {
        if (xml->name() == QLatin1String("source")) {
            key = context + '/' + xml->readElementText();
        } else if (xml->name() == QLatin1String("translation")) {
            if (xml->attributes().hasAttribute("type"))
                catalogue->problems << key + " is " + xml->attributes().value("type").toString();
            if (catalogue->texts.contains(key))
                catalogue->problems << key + " is there twice";
            catalogue->texts.insert(key, xml->readElementText());
        } else {
            catalogue->problems << key + " has " + xml->name().toString();
            xml->skipCurrentElement();
        }
    }
}

void readContext(QXmlStreamReader *xml, Catalogue *catalogue)
{
    QString context;
    while (xml->readNextStartElement()) {
        if (xml->name() == QLatin1String("name"))
            context = xml->readElementText();
        else
            readMessage(xml, context, catalogue);
    }
}

Catalogue readCatalogue(const QString &path)
{
    Catalogue catalogue;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        catalogue.problems << "cannot be opened";
    QXmlStreamReader xml(&file);
    if (xml.readNextStartElement())
        catalogue.language = xml.attributes().value("language").toString();
    while (xml.readNextStartElement())
        readContext(&xml, &catalogue);
    if (xml.hasError())
        catalogue.problems << xml.errorString();
    return catalogue;
}

QString pathOf(const QString &language)
{
    return QStringLiteral(NETINFO_LANG_SOURCE "/skylet_%1.ts").arg(language);
}

QSet<QString> markers(const QString &text)
{
    static const QRegularExpression marker(QStringLiteral("%\\d"));
    QSet<QString> found;
    for (auto matches = marker.globalMatch(text); matches.hasNext();)
        found.insert(matches.next().captured());
    return found;
}

QSet<QString> keysIn(const QString &folder, const QStringList &names, const QString &pattern)
{
    const QRegularExpression key(pattern);
    QSet<QString> found;
    const QFileInfoList files = QDir(folder).entryInfoList(names, QDir::Files);
    for (const QFileInfo &info : files) {
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        for (auto matches = key.globalMatch(text); matches.hasNext();)
            found.insert(matches.next().captured(1));
    }
    return found;
}

} // namespace

class tst_Translations : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void everyLanguageIsWhole_data();
    void everyLanguageIsWhole();
    void theProgramsKeysAreThere_data();
    void theProgramsKeysAreThere();
    void mnemonicsDoNotCollide_data();
    void mnemonicsDoNotCollide();

private:
    void languageRows();
    Catalogue m_english;
};

void tst_Translations::initTestCase()
{
    m_english = readCatalogue(pathOf("en"));
    QCOMPARE(m_english.problems, QStringList());
    QVERIFY(m_english.texts.size() > 80);
}

void tst_Translations::languageRows()
{
    QTest::addColumn<QString>("language");
    const QStringList files = QDir(NETINFO_LANG_SOURCE).entryList({ "skylet_*.ts" });
    QVERIFY(files.size() >= 5);
    for (const QString &file : files)
        QTest::newRow(qPrintable(file)) << file.mid(7, file.size() - 10);
}

void tst_Translations::everyLanguageIsWhole_data()
{
    languageRows();
}

void tst_Translations::everyLanguageIsWhole()
{
    QFETCH(QString, language);
    const Catalogue catalogue = readCatalogue(pathOf(language));
    QCOMPARE(catalogue.problems, QStringList());
    QCOMPARE(catalogue.language, language);
    QCOMPARE(QStringList(catalogue.texts.keys()), QStringList(m_english.texts.keys()));
    for (auto text = catalogue.texts.begin(); text != catalogue.texts.end(); ++text) {
        QVERIFY2(!text.value().trimmed().isEmpty(), qPrintable(text.key()));
        QVERIFY2(markers(text.value()) == markers(m_english.texts.value(text.key())),
                 qPrintable(text.key()));
    }
}

void tst_Translations::theProgramsKeysAreThere_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("context");
    const QStringList code { "*.cpp", "*.h" };
    const QString source = NETINFO_SOURCE;
    QTest::newRow("plug-in") << source + "/NetInfoUIExPlugin" << code << "\"(ID[SC]_[A-Z_]+)\""
                             << "NetInfoUIExPlugin";
    QTest::newRow("application") << source + "/hostapp" << code << "\"(HOST_[A-Z_]+)\""
                                 << "skylet";
    QTest::newRow("units of the application") << source + "/hostapp" << code << "\"(IDS_[A-Z_]+)\""
                                              << "NetInfoUIExPlugin";
    QTest::newRow("host core") << source + "/hostcore" << code << "\"(HOST_PLUGIN_[A-Z_]+)\""
                               << "skylet";
    const QFileInfo config(NETINFO_CONFIG);
    QTest::newRow("shipped units")
        << config.path() << QStringList(config.fileName()) << "langResID=\"([^\"]+)\""
        << "NetInfoUIExPlugin";
}

void tst_Translations::theProgramsKeysAreThere()
{
    QFETCH(QString, folder);
    QFETCH(QStringList, names);
    QFETCH(QString, pattern);
    QFETCH(QString, context);
    const QSet<QString> keys = keysIn(folder, names, pattern);
    QVERIFY(!keys.isEmpty());
    for (const QString &key : keys)
        QVERIFY2(m_english.texts.contains(context + '/' + key), qPrintable(key));
}

void tst_Translations::mnemonicsDoNotCollide_data()
{
    languageRows();
}

// What is reached with Alt in the main window, and with a letter in the open file menu.
void tst_Translations::mnemonicsDoNotCollide()
{
    QFETCH(QString, language);
    const Catalogue catalogue = readCatalogue(pathOf(language));
    const QStringList window { "HOST_MENU_FILE",       "HOST_MENU_VIEW", "HOST_MENU_LANGUAGE",
                               "HOST_VIEW_USAGE",      "HOST_OK",        "HOST_CANCEL",
                               "HOST_VIEW_STATISTICS", "HOST_DISMISS" };
    const QStringList fileMenu { "HOST_DISCONNECT", "HOST_SETTINGS", "HOST_QUIT" };
    for (const QStringList &keys : { window, fileMenu }) {
        QMap<QChar, QString> owners;
        for (const QString &key : keys) {
            const QString text = catalogue.texts.value(QLatin1String("skylet/") + key);
            const auto at = text.indexOf('&');
            QVERIFY2(at >= 0 && at + 1 < text.size(), qPrintable(key));
            const QChar letter = text.at(at + 1).toLower();
            QVERIFY2(!owners.contains(letter), qPrintable(key + " and " + owners.value(letter)));
            owners.insert(letter, key);
        }
    }
}

QTEST_GUILESS_MAIN(tst_Translations)
#include "tst_translations.moc"
