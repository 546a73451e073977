// Real TCP traffic of known size on an interface of the test's own, found in the tree's texts.

#include <QApplication>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QtTest>

#include <host/IUIPlugin.h>
#include <host/velq_extension.h>

#include <cstdio>

#include "HostPaths.h"
#include "Languages.h"
#include "NetworkPair.h"
#include "TestLog.h"

namespace {

constexpr qint64 kPayload = 20000000; // bytes in each direction
constexpr double kOverhead = 1.08; // headers and acknowledgements at most
constexpr double kMegabyte = 1048576;

NetworkPair *g_network = nullptr;

} // namespace

class tst_RealTraffic : public QObject
{
    Q_OBJECT
private slots:
    void theTreeShowsWhatFlowed();

private:
    [[nodiscard]] double megabytes(const QWidget &window, const QString &node, const QString &row);
};

//! The amount in megabytes that \a row under \a node shows; 0 while it is shown in a smaller unit.
double tst_RealTraffic::megabytes(const QWidget &window, const QString &node, const QString &row)
{
    const auto *const tree
        = window.findChild<QTreeWidget *>(QStringLiteral("NetInfoUIPlugin_WidgetTree"));
    for (QTreeWidgetItemIterator it(const_cast<QTreeWidget *>(tree)); *it; ++it) {
        const QString text = (*it)->text(0);
        if (!text.startsWith(row) || !(*it)->parent() || (*it)->parent()->text(0) != node)
            continue;
        const QStringList words = text.split(QLatin1Char(' '));
        return words.last() == QLatin1String("MB") ? words.at(words.size() - 2).toDouble() : 0;
    }
    return 0;
}

void tst_RealTraffic::theTreeShowsWhatFlowed()
{
    QVERIFY(g_network->makeLink());
    TestLog log;
    QTemporaryDir data;
    QCOMPARE(VELQ_StoreSrv_SetDirectory(data.path().toUtf8().constData()), 0);
    QCOMPARE(VELQ_DevSrv_SetInterface("va"), 0);
    HostPaths::setLibraryPath(QStringLiteral(NETINFO_TEST_LIBRARY_PATH));
    const Languages languages(QStringLiteral(NETINFO_TEST_LANG));
    QVERIFY(languages.hasEnglish());

    QPluginLoader loader(QStringLiteral(NETINFO_MODULE));
    auto *const plugin = qobject_cast<IUIPlugin *>(loader.instance());
    QVERIFY2(plugin, qPrintable(loader.errorString()));
    QObject *service = nullptr;
    QVERIFY(plugin->QueryInterface(4098, &service));
    QVERIFY(plugin->Init());
    QWidget window;
    QRect rect(0, 0, 600, 400);
    QVERIFY(plugin->ShowWindow(&window, rect));
    VELQ_Counters counters = {};
    QTRY_VERIFY_WITH_TIMEOUT(VELQ_DevSrv_GetCounters(&counters) == 0, 5000);

    QVERIFY(g_network->upload(kPayload));
    QVERIFY(g_network->download(kPayload));
    const double least = double(kPayload) / kMegabyte - 0.005; // two decimals are shown
    const double most = double(kPayload) * kOverhead / kMegabyte + 0.005;
    const QList<QPair<QString, QString>> rows = {
        { QStringLiteral("Upload"), QStringLiteral("Data:") },
        { QStringLiteral("Download"), QStringLiteral("Data:") },
        { QStringLiteral("Today"), QStringLiteral("Uploaded:") },
        { QStringLiteral("Today"), QStringLiteral("Downloaded:") },
        { QStringLiteral("This month"), QStringLiteral("Downloaded:") },
        { QStringLiteral("This year"), QStringLiteral("Uploaded:") },
    };
    for (const auto &row : rows) {
        QTRY_VERIFY_WITH_TIMEOUT(megabytes(window, row.first, row.second) >= least, 10000);
        const double shown = megabytes(window, row.first, row.second);
        std::printf("%s %s %.2f MB of %.2f MB sent\n", qPrintable(row.first),
                    qPrintable(row.second), shown, double(kPayload) / kMegabyte);
        QVERIFY(shown <= most);
    }
    plugin->OnDestroy();
    QCOMPARE(log.takeProblems(), QStringList());
}

int main(int argc, char **argv)
{
    NetworkPair network; // before any thread: the whole program moves into a namespace
    const QByteArray reason = network.enter();
    if (!reason.isEmpty()) {
        std::printf("SKIPPED: %s\n", reason.constData());
        return 77;
    }
    g_network = &network;
    QApplication application(argc, argv);
    tst_RealTraffic test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_realtraffic.moc"
