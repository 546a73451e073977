#include <NotifyService.h>
#include <PluginContainer.h>
#include <StartupHost.h>

#include <host/Startup.h>

#include <QtTest>

namespace {

const QString kServiceId = QStringLiteral("TEST-SERVICE");
const QString kTarget = QStringLiteral("TEST-TARGET");
constexpr int kServiceKind = 8209;

} // namespace

class tst_NotifyService : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void aPluginReachesATargetThroughTheContainer();
    void anUnknownTargetIsRefused();
    void theTargetsAnswerComesBack();
    void aRemovedTargetIsUnknown();
    void theLatestRegistrationCounts();
    void aTargetMayRemoveItself();
    void anEmptyTargetIsRefused();

private:
    [[nodiscard]] NotifyService::Target noting(int answer);

    QScopedPointer<NotifyService> m_service;
    QVector<QVector<unsigned int>> m_messages;
};

void tst_NotifyService::init()
{
    m_service.reset(new NotifyService);
    m_messages.clear();
}

void tst_NotifyService::cleanup()
{
    StartupHost::setPluginContainer(nullptr);
}

NotifyService::Target tst_NotifyService::noting(int answer)
{
    return [this, answer](unsigned int msg, unsigned int wparam, unsigned int lparam) {
        m_messages.append({ msg, wparam, lparam });
        return answer;
    };
}

// The way a plug-in goes: it knows the interface's name and nothing of this class.
void tst_NotifyService::aPluginReachesATargetThroughTheContainer()
{
    PluginContainer container(QStringLiteral("/nowhere"));
    container.addBuiltIn(kServiceId, m_service.data(), kServiceKind);
    StartupHost::setPluginContainer(&container);
    m_service->addTarget(kTarget, noting(0));
    QObject *object = Startup::GetPluginContainer()->GetPlugin(kServiceId, kServiceKind);
    QVERIFY(object);
    auto *service = static_cast<INotifyService *>(
        object->qt_metacast("com.valtrix.skylet.plugin.INotifyService"));
    QVERIFY(service);
    QCOMPARE(service->NotifyMessage(kTarget, 514, 7, 4000000000U), 0);
    QCOMPARE(m_messages, (QVector<QVector<unsigned int>> { { 514, 7, 4000000000U } }));
}

void tst_NotifyService::anUnknownTargetIsRefused()
{
    m_service->addTarget(kTarget, noting(0));
    for (const QString &id : { QString(), QString("other"), kTarget.toLower(), kTarget + ' ' })
        QVERIFY(m_service->NotifyMessage(id, 514, 0, 0) != 0);
    QVERIFY(m_messages.isEmpty());
}

void tst_NotifyService::theTargetsAnswerComesBack()
{
    m_service->addTarget(kTarget, noting(42));
    QCOMPARE(m_service->NotifyMessage(kTarget, 1, 2, 3), 42);
}

void tst_NotifyService::aRemovedTargetIsUnknown()
{
    m_service->addTarget(kTarget, noting(0));
    m_service->removeTarget(kTarget);
    m_service->removeTarget(kTarget);
    QVERIFY(m_service->NotifyMessage(kTarget, 514, 0, 0) != 0);
    QVERIFY(m_messages.isEmpty());
}

void tst_NotifyService::theLatestRegistrationCounts()
{
    m_service->addTarget(kTarget, noting(1));
    m_service->addTarget(kTarget, noting(2));
    QCOMPARE(m_service->NotifyMessage(kTarget, 514, 0, 0), 2);
    QCOMPARE(m_messages.size(), 1);
}

void tst_NotifyService::aTargetMayRemoveItself()
{
    const std::vector<int> owned(1000, 5); // dies with the function, unless that is still running
    m_service->addTarget(kTarget, [this, owned](unsigned int, unsigned int, unsigned int) {
        m_service->removeTarget(kTarget);
        return owned.back();
    });
    QCOMPARE(m_service->NotifyMessage(kTarget, 514, 0, 0), 5);
    QVERIFY(m_service->NotifyMessage(kTarget, 514, 0, 0) < 0);
}

void tst_NotifyService::anEmptyTargetIsRefused()
{
    m_service->addTarget(kTarget, nullptr);
    QVERIFY(m_service->NotifyMessage(kTarget, 514, 0, 0) != 0);
}

QTEST_GUILESS_MAIN(tst_NotifyService)
#include "tst_notifyservice.moc"
