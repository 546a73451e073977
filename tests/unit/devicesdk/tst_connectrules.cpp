#include "modem/ConnectRules.h"

#include <QtTest>

#include <cerrno>

using velq::ConnectResult;
using velq::ConnectStep;

Q_DECLARE_METATYPE(ConnectResult)
Q_DECLARE_METATYPE(ConnectStep)

class tst_ConnectRules : public QObject
{
    Q_OBJECT
private slots:
    void steps_data();
    void steps();
    void activations_data();
    void activations();
    void errors_data();
    void errors();
    void openings_data();
    void openings();
};

void tst_ConnectRules::steps_data()
{
    QTest::addColumn<unsigned>("state");
    QTest::addColumn<ConnectStep>("step");
    QTest::newRow("unknown") << 0U << ConnectStep::Activate;
    QTest::newRow("unmanaged") << 10U << ConnectStep::NotManaged;
    QTest::newRow("unavailable") << 20U << ConnectStep::Activate;
    QTest::newRow("disconnected") << 30U << ConnectStep::Activate;
    QTest::newRow("preparing") << 40U << ConnectStep::Wait;
    QTest::newRow("needs a password") << 60U << ConnectStep::Wait;
    QTest::newRow("waiting for secondaries") << 90U << ConnectStep::Wait;
    QTest::newRow("activated") << 100U << ConnectStep::Done;
    QTest::newRow("deactivating") << 110U << ConnectStep::Activate;
    QTest::newRow("failed") << 120U << ConnectStep::Activate;
}

void tst_ConnectRules::steps()
{
    QFETCH(unsigned, state);
    QTEST(velq::connectStep(state), "step");
}

void tst_ConnectRules::activations_data()
{
    QTest::addColumn<unsigned>("state");
    QTest::addColumn<int>("result"); // -1: not known yet
    const int failed = int(ConnectResult::Failed);
    QTest::newRow("unknown") << 0U << failed;
    QTest::newRow("activating") << 1U << -1;
    QTest::newRow("activated") << 2U << int(ConnectResult::Done);
    QTest::newRow("deactivating") << 3U << failed;
    QTest::newRow("deactivated") << 4U << failed;
    QTest::newRow("a number of the future") << 5U << failed;
}

void tst_ConnectRules::activations()
{
    QFETCH(unsigned, state);
    const auto result = velq::resultOfActivation(state);
    QTEST(result ? int(*result) : -1, "result");
}

void tst_ConnectRules::errors_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<ConnectResult>("result");
    const auto row
        = [](const char *name, ConnectResult result) { QTest::newRow(name) << name << result; };
    row("org.freedesktop.DBus.Error.ServiceUnknown", ConnectResult::NoService);
    row("org.freedesktop.DBus.Error.NameHasNoOwner", ConnectResult::NoService);
    row("org.freedesktop.DBus.Error.AccessDenied", ConnectResult::Refused);
    row("org.freedesktop.DBus.Error.InteractiveAuthorizationRequired", ConnectResult::Refused);
    row("org.freedesktop.NetworkManager.PermissionDenied", ConnectResult::Refused);
    row("org.freedesktop.NetworkManager.UnknownDevice", ConnectResult::NoDevice);
    row("org.freedesktop.NetworkManager.UnknownConnection", ConnectResult::NoProfile);
    row("org.freedesktop.NetworkManager.ConnectionNotAvailable", ConnectResult::NoProfile);
    row("org.freedesktop.NetworkManager.Device.NotActive", ConnectResult::Failed);
    row("org.freedesktop.NetworkManager.Failed", ConnectResult::Failed);
    row("org.freedesktop.DBus.Error.UnknownMethod", ConnectResult::Failed);
    row("timeout", ConnectResult::Failed);
    row("", ConnectResult::Failed);
}

void tst_ConnectRules::errors()
{
    QFETCH(QString, name);
    QTEST(velq::connectResultOfError(name.toStdString()), "result");
}

void tst_ConnectRules::openings_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<ConnectResult>("result");
    QTest::newRow("no socket") << ENOENT << ConnectResult::NoService;
    QTest::newRow("no memory") << ENOMEM << ConnectResult::Failed;
}

void tst_ConnectRules::openings()
{
    QFETCH(int, error);
    QTEST(velq::connectResultOfOpening(error), "result");
}

QTEST_GUILESS_MAIN(tst_ConnectRules)
#include "tst_connectrules.moc"
