#pragma once

#include <host/HostCoreExport.h>
#include <host/INotifyService.h>

#include <QHash>
#include <QObject>

#include <functional>

//! Carries messages to those who registered for them. GUI thread.
class HOST_CORE_EXPORT NotifyService : public QObject, public INotifyService
{
    Q_OBJECT
    Q_INTERFACES(INotifyService)
public:
    //! Takes a message and its two parameters. 0; anything else: it is not taken.
    using Target = std::function<int(unsigned int msg, unsigned int wparam, unsigned int lparam)>;

    explicit NotifyService(QObject *parent = nullptr);
    ~NotifyService() override;

    //! Registers \a target under \a id, in the place of whoever had it.
    void addTarget(const QString &id, Target target);
    void removeTarget(const QString &id);
    //! The target's answer; -1 for an unknown \a target.
    int NotifyMessage(const QString &target, unsigned int msg, unsigned int wparam,
                      unsigned int lparam) override;

private:
    QHash<QString, Target> m_targets;
};
