#pragma once
// The services of with_networkmanager.sh, as a test that it runs has them: kills and starts them,
// and has the stand-in for ModemManager do something.

#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <sys/types.h>

#include <csignal>

namespace MockServices {

[[nodiscard]] inline bool run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    return process.waitForFinished(15000) && process.exitCode() == 0;
}

[[nodiscard]] inline bool mock(const QString &method, const QStringList &arguments = {})
{
    return run(QStringLiteral("dbus-send"),
               QStringList { QStringLiteral("--system"), QStringLiteral("--print-reply"),
                             QStringLiteral("--dest=org.freedesktop.ModemManager1"),
                             QStringLiteral("/org/freedesktop/ModemManager1"),
                             QStringLiteral("org.freedesktop.DBus.Mock.") + method }
                   + arguments);
}

//! \a name: "bus", "mm" or "nm".
[[nodiscard]] inline bool startService(const char *name)
{
    return run(qEnvironmentVariable("NETINFO_STARTER"),
               { QStringLiteral("--start"), QString::fromLatin1(name) });
}

[[nodiscard]] inline bool killService(const char *name)
{
    QFile file(qEnvironmentVariable("NETINFO_SERVICES") + QStringLiteral("/%1.pid").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const pid_t process = file.readAll().trimmed().toInt();
    return process > 1 && kill(process, SIGKILL) == 0;
}

} // namespace MockServices
