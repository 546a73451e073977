#pragma once
// What the tests of faults share: namespaces with a link whose traffic is known.

#include <QObject>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <random>

#include "FaultClient.h"
#include "FaultTraffic.h"
#include "NetworkPair.h"

class FaultStage : public QObject
{
    Q_OBJECT
public:
    //! Runs \a Test in namespaces of its own; 77 where that is not possible.
    template <typename Test>
    static int run(int argc, char **argv)
    {
        return run(argc, argv, [] { return std::unique_ptr<QObject>(std::make_unique<Test>()); });
    }

protected slots:
    void init();
    void cleanup();

protected:
    //! Makes "va" here with its peer "vb" there, both up, va with the default route.
    [[nodiscard]] static bool makeLink(int index = 0);
    [[nodiscard]] static bool addRoute(const QString &link = QStringLiteral("va"));
    //! Options for a client with a store that has begun to count \a interface with its counters
    //! now.
    [[nodiscard]] ClientOptions beginStore(const QString &name, const QString &interface,
                                           const QStringList &launcher = {});
    //! What a program says that is started now, twice, so that nothing is found later.
    [[nodiscard]] static Usage usageAtLast(const ClientOptions &options);
    void sleepUpTo(int milliseconds);

    static NetworkPair *s_network;
    static std::mt19937 *s_random;
    std::unique_ptr<QTemporaryDir> m_folder;

private:
    static int run(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &make);
    [[nodiscard]] static QByteArray prepare(NetworkPair &network);
};
