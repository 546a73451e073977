#include <PluginBuild.h>

#include <QTemporaryDir>
#include <QtTest>

class tst_PluginBuild : public QObject
{
    Q_OBJECT
private slots:
    void major_data();
    void major();
    void aFileThatIsNotThereSaysNothing();
    void anEmptyFileSaysNothing();
    void aFileIsRead();
};

void tst_PluginBuild::major_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<int>("expected");
    const QByteArray note("qt-project!", 12);
    const QByteArray section("QTMETADATA !");
    const QByteArray qt6("\1\6\4\1", 4);
    const QByteArray qt5("\0\5\17\0", 4);
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("no mark") << QByteArray("\177ELF and more") << 0;
    QTest::newRow("note of Qt 6") << "x" + note + qt6 + "y" << 6;
    QTest::newRow("section of Qt 5") << "x" + section + qt5 << 5;
    QTest::newRow("a text that looks like the mark") << "x" + section + "0 n" << 0;
    QTest::newRow("the mark after a text like it") << section + "0 n" + section + qt5 << 5;
    QTest::newRow("another format of the mark") << note + QByteArray("\2\6", 2) << 0;
    QTest::newRow("a version that there is not") << note + QByteArray("\1\177", 2) << 0;
    QTest::newRow("cut off after the mark") << note << 0;
    QTest::newRow("cut off after the format") << note + QByteArray("\1", 1) << 0;
}

void tst_PluginBuild::major()
{
    QFETCH(QByteArray, image);
    QTEST(PluginBuild::qtMajorOf(image), "expected");
}

void tst_PluginBuild::aFileThatIsNotThereSaysNothing()
{
    const QTemporaryDir folder;
    QCOMPARE(PluginBuild::qtMajorOfFile(folder.filePath("none.so")), 0);
    QCOMPARE(PluginBuild::qtMajorOfFile(folder.path()), 0);
}

void tst_PluginBuild::anEmptyFileSaysNothing()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("empty.so"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(PluginBuild::qtMajorOfFile(file.fileName()), 0);
}

void tst_PluginBuild::aFileIsRead()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("some.so"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("QTMETADATA !") + QByteArray("\0\5", 2));
    file.close();
    QCOMPARE(PluginBuild::qtMajorOfFile(file.fileName()), 5);
}

QTEST_GUILESS_MAIN(tst_PluginBuild)
#include "tst_pluginbuild.moc"
