// The whole program over its limit: traffic flows, the warning comes up, its button is clicked. Run
// by with_networkmanager.sh the connection goes down; without any bus the window says why it
// cannot.

#include <MainWindow.h>
#include <Session.h>

#include <HostPaths.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLoggingCategory>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>

#include "NetworkPair.h"

namespace {

constexpr int kPatienceMs = 10000;
constexpr int kDatagrams = 2000;
constexpr int kDatagramSize = 1200; // 2.4 MB in all: over the limit of 1 MB

NetworkPair *g_network = nullptr; // null under NetworkManager

[[nodiscard]] bool isManaged()
{
    return g_network == nullptr;
}

//! Sends datagrams to \a address, where nobody listens.
[[nodiscard]] bool sendTo(const char *address)
{
    const int handle = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in peer = {};
    peer.sin_family = AF_INET;
    peer.sin_port = htons(9);
    ::inet_pton(AF_INET, address, &peer.sin_addr);
    const std::vector<char> data(kDatagramSize);
    int sent = 0;
    for (int i = 0; i < kDatagrams; ++i) {
        const ssize_t bytes = ::sendto(handle, data.data(), data.size(), 0,
                                       reinterpret_cast<const sockaddr *>(&peer), sizeof peer);
        sent += bytes == kDatagramSize ? 1 : 0; // the peer's refusals fail some calls
    }
    ::close(handle);
    return sent > kDatagrams / 2;
}

//! Whether wwan0 has its address, as another program sees it.
[[nodiscard]] bool hasAddress()
{
    QProcess ip;
    ip.start(QStringLiteral("ip"), { "-4", "addr", "show", "wwan0" });
    return ip.waitForFinished() && ip.readAllStandardOutput().contains("10.79.0.2");
}

[[nodiscard]] QWidget *named(const char *name)
{
    const QWidgetList all = QApplication::allWidgets();
    for (QWidget *one : all) {
        if (one->objectName() == QLatin1String(name) && one->isVisible())
            return one;
    }
    return nullptr;
}

[[nodiscard]] QString textOf(const char *name)
{
    const auto *label = qobject_cast<QLabel *>(named(name));
    return label ? label->text() : QString();
}

[[nodiscard]] QPushButton *disconnectButton()
{
    const auto buttons = named("WarnDlg_WidgetMain")->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->text() == QLatin1String("Disconnect"))
            return button;
    }
    return nullptr;
}

[[nodiscard]] QByteArray settings()
{
    return "[uselimit]\nchkRecurrence=true\nradioDaily=true\nradioWeekly=false\nradioMonthly="
           "false\n"
           "chkVolume=true\nchkTimeVolume=false\nSizeVolume=1\nSizeTimeVolume=100\n"
           "chkWarnbefore=true\nchkWarnAfter=true\nShowDataWarnAfter=true\nShowDataWarnBefor=true\n"
           "ShowTimeWarnBefor=true\nShowTimeWarnAfter=true\nstartdate=01-01-2026\nstartweekdate=0\n"
           "startmonthdate=0";
}

} // namespace

class tst_LimitDisconnect : public QObject
{
    Q_OBJECT
private slots:
    void aClickOnTheWarningDisconnects();
};

void tst_LimitDisconnect::aClickOnTheWarningDisconnects()
{
    QTemporaryDir data;
    QFile file(data.filePath(QStringLiteral("DataUsageLimit.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(settings());
    file.close();
    HostPaths::setLibraryPath(QStringLiteral(NETINFO_TEST_LIBRARY_PATH));
    Options options;
    options.dataDirectory = data.path();
    options.interfaceName = QLatin1String(isManaged() ? "wwan0" : "va");
    options.language = QStringLiteral("en");
    options.view = HostView::Usage;
    if (!isManaged())
        QVERIFY(g_network->makeLink());
    Session session(options, false);
    QVERIFY(!session.prepare());
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (qobject_cast<MainWindow *>(window))
            window->show();
    }
    QTRY_VERIFY_WITH_TIMEOUT(textOf("Host_StatusConnection").contains(QLatin1String("Connected")),
                             kPatienceMs);
    QVERIFY(!named("WarnDlg_ExtendedDlg"));

    QVERIFY(sendTo(isManaged() ? "10.79.0.1" : "10.81.0.2"));
    QTRY_VERIFY_WITH_TIMEOUT(named("WarnDlg_ExtendedDlg"), kPatienceMs);
    QCOMPARE(textOf("WarnDlg_LabelWarn"),
             QStringLiteral("You have used up your data volume for this period."));
    QVERIFY(disconnectButton());
    QVERIFY(disconnectButton()->isVisible());
    QElapsedTimer time;
    time.start();
    QTest::mouseClick(disconnectButton(), Qt::LeftButton);
    QVERIFY(!named("WarnDlg_ExtendedDlg"));
    if (isManaged()) {
        QTRY_VERIFY_WITH_TIMEOUT(!hasAddress(), kPatienceMs);
        std::printf("down %lld ms after the click\n", static_cast<long long>(time.elapsed()));
        QTRY_COMPARE_WITH_TIMEOUT(textOf("Host_MessageText"),
                                  QStringLiteral("The connection has been ended."), kPatienceMs);
    } else {
        QTRY_COMPARE_WITH_TIMEOUT(
            textOf("Host_MessageText"),
            QStringLiteral("The connection cannot be ended: NetworkManager is not running."),
            kPatienceMs);
    }
}

int main(int argc, char **argv)
{
    NetworkPair network; // before any thread: the whole program moves into a namespace
    if (!qEnvironmentVariableIsSet("NETINFO_SERVICES")) {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        const QByteArray reason = network.enter();
        if (!reason.isEmpty()) {
            std::printf("SKIPPED: %s\n", reason.constData());
            return 77;
        }
        g_network = &network;
    }
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    tst_LimitDisconnect test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_limitdisconnect.moc"
