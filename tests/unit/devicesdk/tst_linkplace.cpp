#include "counters/LinkPlace.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using velq::findLinkPlace;

//! As the system has them: a folder for each device, and links to them by name.
class tst_LinkPlace : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void theInstanceIsTheDevicesOwn();
    void anotherIndexIsAnotherLink();
    void wirelessOnes();
    void namesThatLeadNowhere();

private:
    [[nodiscard]] QString path(const QString &name) const;
    void makeDevice(const QString &name, const QByteArray &index) const;

    QTemporaryDir m_root;
};

void tst_LinkPlace::initTestCase()
{
    QVERIFY(QDir(m_root.path()).mkpath("sys/class/net"));
    makeDevice("wwan0", "7\n");
    makeDevice("wlan0", "8\n");
    makeDevice("wlan1", "9\n");
    makeDevice("odd", "");
    QVERIFY(QDir(path("wlan0")).mkdir("phy80211"));
    QVERIFY(QDir(path("wlan1")).mkdir("wireless"));
}

QString tst_LinkPlace::path(const QString &name) const
{
    return m_root.path() + "/sys/class/net/" + name;
}

void tst_LinkPlace::makeDevice(const QString &name, const QByteArray &index) const
{
    const QString device = "sys/devices/" + name;
    QVERIFY(QDir(m_root.path()).mkpath(device));
    QFile file(m_root.path() + '/' + device + "/ifindex");
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(index), qint64(index.size()));
    QVERIFY(QFile::link(m_root.path() + '/' + device, path(name)));
}

void tst_LinkPlace::theInstanceIsTheDevicesOwn()
{
    const std::string root = m_root.path().toStdString();
    const auto first = findLinkPlace(root, "wwan0", 7);
    QVERIFY(first.instance != 0);
    QCOMPARE(first.wireless, false);
    QVERIFY(findLinkPlace(root, "wlan0", 8).instance != first.instance);
    QVERIFY(QFile::rename(path("wwan0"), path("wwan1")));
    QCOMPARE(findLinkPlace(root, "wwan1", 7).instance, first.instance);
    QVERIFY(QFile::rename(path("wwan1"), path("wwan0")));
}

void tst_LinkPlace::anotherIndexIsAnotherLink()
{
    const auto place = findLinkPlace(m_root.path().toStdString(), "wlan0", 7);
    QCOMPARE(place.instance, quint64(0));
    QCOMPARE(place.wireless, false); // what is so of the other one
}

void tst_LinkPlace::wirelessOnes()
{
    QVERIFY(findLinkPlace(m_root.path().toStdString(), "wlan0", 8).wireless);
    QVERIFY(findLinkPlace(m_root.path().toStdString(), "wlan1", 9).wireless);
}

void tst_LinkPlace::namesThatLeadNowhere()
{
    for (const char *name : { "", "..", "none", "odd", "a/b", "a name that is far too long" })
        QCOMPARE(findLinkPlace(m_root.path().toStdString(), name, 7).instance, quint64(0));
}

QTEST_GUILESS_MAIN(tst_LinkPlace)
#include "tst_linkplace.moc"
