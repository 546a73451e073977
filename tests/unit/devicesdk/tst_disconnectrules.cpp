#include "modem/DisconnectRules.h"

#include <QtTest>

#include <cerrno>

using velq::DisconnectResult;

Q_DECLARE_METATYPE(DisconnectResult)

class tst_DisconnectRules : public QObject
{
    Q_OBJECT
private slots:
    void states_data();
    void states();
    void errors_data();
    void errors();
    void gone_data();
    void gone();
    void openings_data();
    void openings();
};

namespace {

constexpr int kAsk = -1; // resultOfState() has nothing to say yet

} // namespace

void tst_DisconnectRules::states_data()
{
    QTest::addColumn<unsigned>("state");
    QTest::addColumn<int>("before");
    QTest::addColumn<bool>("down");
    QTest::addColumn<DisconnectResult>("atTimeout");
    const auto row
        = [](const char *name, unsigned state, int before, bool down, DisconnectResult atTimeout) {
              QTest::newRow(name) << state << before << down << atTimeout;
          };
    const auto done = DisconnectResult::Done;
    const auto failed = DisconnectResult::Failed;
    row("unknown", 0, int(failed), true, done);
    row("unmanaged", 10, int(DisconnectResult::NotManaged), true, done);
    row("unavailable", 20, int(DisconnectResult::NoConnection), true, done);
    row("disconnected", 30, int(DisconnectResult::NoConnection), true, done);
    row("preparing", 40, kAsk, false, failed);
    row("needs a password", 60, kAsk, false, failed);
    row("checking the address", 80, kAsk, false, failed);
    row("waiting for secondaries", 90, kAsk, false, failed);
    row("activated", 100, kAsk, false, failed);
    row("deactivating", 110, kAsk, false, done);
    row("failed", 120, int(DisconnectResult::NoConnection), true, done);
    row("a number of the future", 130, kAsk, false, failed);
}

void tst_DisconnectRules::states()
{
    QFETCH(unsigned, state);
    QFETCH(int, before);
    const auto result = velq::resultOfState(state);
    QCOMPARE(result ? int(*result) : kAsk, before);
    QTEST(velq::isDown(state), "down");
    QTEST(velq::resultAtTimeout(state), "atTimeout");
}

void tst_DisconnectRules::errors_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<DisconnectResult>("result");
    const auto row
        = [](const char *name, DisconnectResult result) { QTest::newRow(name) << name << result; };
    row("org.freedesktop.DBus.Error.ServiceUnknown", DisconnectResult::NoService);
    row("org.freedesktop.DBus.Error.NameHasNoOwner", DisconnectResult::NoService);
    row("org.freedesktop.DBus.Error.AccessDenied", DisconnectResult::Refused);
    row("org.freedesktop.DBus.Error.AuthFailed", DisconnectResult::Refused);
    row("org.freedesktop.DBus.Error.InteractiveAuthorizationRequired", DisconnectResult::Refused);
    row("org.freedesktop.NetworkManager.PermissionDenied", DisconnectResult::Refused);
    row("org.freedesktop.NetworkManager.Device.NotAllowed", DisconnectResult::Refused);
    row("org.freedesktop.NetworkManager.UnknownDevice", DisconnectResult::NotManaged);
    row("org.freedesktop.NetworkManager.Device.NotActive", DisconnectResult::Done);
    row("org.freedesktop.DBus.Error.NoReply", DisconnectResult::Failed);
    row("org.freedesktop.DBus.Error.UnknownMethod", DisconnectResult::Failed);
    row("org.freedesktop.NetworkManager.PermissionDenied2", DisconnectResult::Failed);
    row("timeout", DisconnectResult::Failed);
    row("", DisconnectResult::Failed);
}

void tst_DisconnectRules::errors()
{
    QFETCH(QString, name);
    QTEST(velq::resultOfError(name.toStdString()), "result");
}

void tst_DisconnectRules::gone_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("gone");
    QTest::newRow("object") << "org.freedesktop.DBus.Error.UnknownObject" << true;
    QTest::newRow("method") << "org.freedesktop.DBus.Error.UnknownMethod" << true;
    QTest::newRow("interface") << "org.freedesktop.DBus.Error.UnknownInterface" << true;
    QTest::newRow("service") << "org.freedesktop.DBus.Error.ServiceUnknown" << false;
    QTest::newRow("no error") << "" << false;
}

void tst_DisconnectRules::gone()
{
    QFETCH(QString, name);
    QTEST(velq::isGone(name.toStdString()), "gone");
}

void tst_DisconnectRules::openings_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<DisconnectResult>("result");
    QTest::newRow("no socket") << ENOENT << DisconnectResult::NoService;
    QTest::newRow("nobody listens") << ECONNREFUSED << DisconnectResult::NoService;
    QTest::newRow("not for this user") << EACCES << DisconnectResult::NoService;
    QTest::newRow("no address") << EINVAL << DisconnectResult::NoService;
    QTest::newRow("it hangs up") << EPIPE << DisconnectResult::Failed;
    QTest::newRow("it resets") << ECONNRESET << DisconnectResult::Failed;
    QTest::newRow("it has left") << ENOTCONN << DisconnectResult::Failed;
    QTest::newRow("no memory") << ENOMEM << DisconnectResult::Failed;
    QTest::newRow("no more files") << EMFILE << DisconnectResult::Failed;
    QTest::newRow("no more files of the system") << ENFILE << DisconnectResult::Failed;
}

void tst_DisconnectRules::openings()
{
    QFETCH(int, error);
    QTEST(velq::resultOfOpening(error), "result");
}

QTEST_GUILESS_MAIN(tst_DisconnectRules)
#include "tst_disconnectrules.moc"
